#pragma once

#include "CoreTypes.h"

#include <cstddef>
#include <type_traits>

/**
 * Compile-time checking of printf-style format strings against the argument types, for
 * FString::Printf and Appendf. A format must be a TEXT() literal: its specifiers are matched
 * with the arguments while compiling, so "%s" given an FString, "%d" given a double, or a
 * missing argument stops the build at the call. The build error names what went wrong through
 * the FormatError_* function it could not call.
 */
namespace UE::Core::Private::FormatString
{
	/** What a Printf argument is, once decayed. */
	enum class EArgKind : uint8
	{
		None,
		SignedInt,
		UnsignedInt,
		Float,
		TCharPointer,
		AnsiPointer,
		Utf8Pointer,
		Pointer,
		NullPointer,
		Unsupported,
	};

	template <typename T>
	constexpr EArgKind ClassifyArg()
	{
		using U = std::remove_cv_t<T>;
		if constexpr (std::is_same_v<U, bool>)
		{
			return EArgKind::SignedInt;
		}
		else if constexpr (std::is_enum_v<U>)
		{
			return std::is_signed_v<std::underlying_type_t<U>> ? EArgKind::SignedInt : EArgKind::UnsignedInt;
		}
		else if constexpr (std::is_integral_v<U>)
		{
			return std::is_signed_v<U> ? EArgKind::SignedInt : EArgKind::UnsignedInt;
		}
		else if constexpr (std::is_floating_point_v<U>)
		{
			return EArgKind::Float;
		}
		else if constexpr (std::is_null_pointer_v<U>)
		{
			return EArgKind::NullPointer;
		}
		else if constexpr (std::is_pointer_v<U>)
		{
			using P = std::remove_cv_t<std::remove_pointer_t<U>>;
			if constexpr (std::is_same_v<P, TCHAR>)
			{
				return EArgKind::TCharPointer;
			}
			else if constexpr (std::is_same_v<P, ANSICHAR>)
			{
				return EArgKind::AnsiPointer;
			}
			else if constexpr (std::is_same_v<P, UTF8CHAR>)
			{
				return EArgKind::Utf8Pointer;
			}
			else
			{
				return EArgKind::Pointer;
			}
		}
		else
		{
			return EArgKind::Unsupported;
		}
	}

	/** One argument, type-erased for the formatter. Size is the byte width of an integer argument. */
	struct FArg
	{
		EArgKind Kind = EArgKind::None;
		uint8 Size = 0;
		union
		{
			int64 Signed;
			uint64 Unsigned;
			double Float;
			const TCHAR* TCharString;
			const ANSICHAR* AnsiString;
			const UTF8CHAR* Utf8String;
			const void* Pointer;
		};

		constexpr FArg() : Signed(0) {}
	};

	template <typename T>
	constexpr FArg MakeArg(T Value)
	{
		FArg Arg;
		Arg.Kind = ClassifyArg<T>();
		if constexpr (std::is_enum_v<T>)
		{
			Arg.Size = sizeof(T);
			if constexpr (std::is_signed_v<std::underlying_type_t<T>>)
			{
				Arg.Signed = static_cast<int64>(Value);
			}
			else
			{
				Arg.Unsigned = static_cast<uint64>(Value);
			}
		}
		else if constexpr (std::is_integral_v<T>)
		{
			Arg.Size = sizeof(T);
			if constexpr (std::is_signed_v<T> || std::is_same_v<std::remove_cv_t<T>, bool>)
			{
				Arg.Signed = static_cast<int64>(Value);
			}
			else
			{
				Arg.Unsigned = static_cast<uint64>(Value);
			}
		}
		else if constexpr (std::is_floating_point_v<T>)
		{
			Arg.Float = static_cast<double>(Value);
		}
		else if constexpr (std::is_null_pointer_v<T>)
		{
			Arg.Pointer = nullptr;
		}
		else if constexpr (std::is_pointer_v<T>)
		{
			using P = std::remove_cv_t<std::remove_pointer_t<T>>;
			if constexpr (std::is_same_v<P, TCHAR>)
			{
				Arg.TCharString = Value;
			}
			else if constexpr (std::is_same_v<P, ANSICHAR>)
			{
				Arg.AnsiString = Value;
			}
			else if constexpr (std::is_same_v<P, UTF8CHAR>)
			{
				Arg.Utf8String = Value;
			}
			else if constexpr (std::is_function_v<P>)
			{
				Arg.Pointer = reinterpret_cast<const void*>(Value);
			}
			else
			{
				Arg.Pointer = static_cast<const void*>(Value);
			}
		}
		return Arg;
	}

	/** The first problem CheckFormat finds, or Ok. */
	enum class EFormatCheck : uint8
	{
		Ok,
		TooFewArguments,
		TooManyArguments,
		IntegerSpecifierGivenNonInteger,
		FloatSpecifierGivenNonFloat,
		PercentSNeedsTCharPointer,
		PercentHsNeedsAnsiOrUtf8Pointer,
		PercentCNeedsCharacter,
		PercentPNeedsPointer,
		StarNeedsInteger,
		UnknownConversion,
		IncompleteSpecifier,
		PercentNNotSupported,
	};

	constexpr bool IsIntegerKind(EArgKind Kind) { return Kind == EArgKind::SignedInt || Kind == EArgKind::UnsignedInt; }

	/** Matches every specifier of Format with the argument kinds; usable at compile time and at run time. */
	constexpr EFormatCheck CheckFormat(const TCHAR* Format, int32 FormatLen, const EArgKind* Kinds, int32 NumArgs)
	{
		int32 ArgIndex = 0;
		EArgKind Kind = EArgKind::None;
		auto NextArg = [&](EArgKind& OutKind) -> bool
		{
			if (ArgIndex >= NumArgs)
			{
				return false;
			}
			OutKind = Kinds[ArgIndex++];
			return true;
		};
		auto IsDigit = [](TCHAR C) { return C >= TCHAR('0') && C <= TCHAR('9'); };

		int32 Pos = 0;
		while (Pos < FormatLen)
		{
			if (Format[Pos] != TCHAR('%'))
			{
				++Pos;
				continue;
			}
			if (++Pos >= FormatLen)
			{
				return EFormatCheck::IncompleteSpecifier;
			}
			if (Format[Pos] == TCHAR('%'))
			{
				++Pos;
				continue;
			}
			while (Pos < FormatLen && (Format[Pos] == TCHAR('-') || Format[Pos] == TCHAR('+') || Format[Pos] == TCHAR(' ') || Format[Pos] == TCHAR('#') || Format[Pos] == TCHAR('0')))
			{
				++Pos;
			}
			if (Pos < FormatLen && Format[Pos] == TCHAR('*'))
			{
				if (!NextArg(Kind))
				{
					return EFormatCheck::TooFewArguments;
				}
				if (!IsIntegerKind(Kind))
				{
					return EFormatCheck::StarNeedsInteger;
				}
				++Pos;
			}
			while (Pos < FormatLen && IsDigit(Format[Pos]))
			{
				++Pos;
			}
			if (Pos < FormatLen && Format[Pos] == TCHAR('.'))
			{
				++Pos;
				if (Pos < FormatLen && Format[Pos] == TCHAR('*'))
				{
					if (!NextArg(Kind))
					{
						return EFormatCheck::TooFewArguments;
					}
					if (!IsIntegerKind(Kind))
					{
						return EFormatCheck::StarNeedsInteger;
					}
					++Pos;
				}
				while (Pos < FormatLen && IsDigit(Format[Pos]))
				{
					++Pos;
				}
			}

			bool bShort = false;
			while (Pos < FormatLen)
			{
				const TCHAR C = Format[Pos];
				if (C == TCHAR('h'))
				{
					bShort = true;
					++Pos;
				}
				else if (C == TCHAR('l') || C == TCHAR('L') || C == TCHAR('z') || C == TCHAR('j') || C == TCHAR('t') || C == TCHAR('q'))
				{
					++Pos;
				}
				else if (C == TCHAR('I') && Pos + 2 < FormatLen
					&& ((Format[Pos + 1] == TCHAR('6') && Format[Pos + 2] == TCHAR('4')) || (Format[Pos + 1] == TCHAR('3') && Format[Pos + 2] == TCHAR('2'))))
				{
					Pos += 3;
				}
				else
				{
					break;
				}
			}
			if (Pos >= FormatLen)
			{
				return EFormatCheck::IncompleteSpecifier;
			}

			const TCHAR Conversion = Format[Pos++];
			if (Conversion == TCHAR('n'))
			{
				return EFormatCheck::PercentNNotSupported;
			}
			const bool bKnown = Conversion == TCHAR('d') || Conversion == TCHAR('i') || Conversion == TCHAR('u') || Conversion == TCHAR('o')
				|| Conversion == TCHAR('x') || Conversion == TCHAR('X') || Conversion == TCHAR('f') || Conversion == TCHAR('F')
				|| Conversion == TCHAR('e') || Conversion == TCHAR('E') || Conversion == TCHAR('g') || Conversion == TCHAR('G')
				|| Conversion == TCHAR('a') || Conversion == TCHAR('A') || Conversion == TCHAR('c') || Conversion == TCHAR('C')
				|| Conversion == TCHAR('s') || Conversion == TCHAR('S') || Conversion == TCHAR('p');
			if (!bKnown)
			{
				return EFormatCheck::UnknownConversion;
			}
			if (!NextArg(Kind))
			{
				return EFormatCheck::TooFewArguments;
			}
			switch (Conversion)
			{
			case TCHAR('d'): case TCHAR('i'): case TCHAR('u'): case TCHAR('o'): case TCHAR('x'): case TCHAR('X'):
				if (!IsIntegerKind(Kind))
				{
					return EFormatCheck::IntegerSpecifierGivenNonInteger;
				}
				break;
			case TCHAR('c'): case TCHAR('C'):
				if (!IsIntegerKind(Kind))
				{
					return EFormatCheck::PercentCNeedsCharacter;
				}
				break;
			case TCHAR('s'): case TCHAR('S'):
				if (bShort ? (Kind != EArgKind::AnsiPointer && Kind != EArgKind::Utf8Pointer && Kind != EArgKind::NullPointer)
						   : (Kind != EArgKind::TCharPointer && Kind != EArgKind::NullPointer))
				{
					return bShort ? EFormatCheck::PercentHsNeedsAnsiOrUtf8Pointer : EFormatCheck::PercentSNeedsTCharPointer;
				}
				break;
			case TCHAR('p'):
				if (Kind != EArgKind::Pointer && Kind != EArgKind::TCharPointer && Kind != EArgKind::AnsiPointer && Kind != EArgKind::Utf8Pointer && Kind != EArgKind::NullPointer)
				{
					return EFormatCheck::PercentPNeedsPointer;
				}
				break;
			default:
				if (Kind != EArgKind::Float)
				{
					return EFormatCheck::FloatSpecifierGivenNonFloat;
				}
				break;
			}
		}
		return ArgIndex == NumArgs ? EFormatCheck::Ok : EFormatCheck::TooManyArguments;
	}

	// Deliberately not constexpr: reaching one while a format is checked at compile time is the
	// error, and its name is the message.
	void FormatError_TooFewArgumentsForFormat();
	void FormatError_TooManyArgumentsForFormat();
	void FormatError_IntegerSpecifierGivenNonInteger();
	void FormatError_FloatSpecifierGivenNonFloat();
	void FormatError_PercentSNeedsTCharPointer_UseStarOnFString();
	void FormatError_PercentHsNeedsAnsiOrUtf8Pointer();
	void FormatError_PercentCNeedsCharacter();
	void FormatError_PercentPNeedsPointer();
	void FormatError_StarWidthOrPrecisionNeedsInt();
	void FormatError_UnknownConversionSpecifier();
	void FormatError_IncompleteSpecifierAtEnd();
	void FormatError_PercentNIsNotSupported();

	constexpr void ReportAtCompileTime(EFormatCheck Check)
	{
		switch (Check)
		{
		case EFormatCheck::Ok: break;
		case EFormatCheck::TooFewArguments: FormatError_TooFewArgumentsForFormat(); break;
		case EFormatCheck::TooManyArguments: FormatError_TooManyArgumentsForFormat(); break;
		case EFormatCheck::IntegerSpecifierGivenNonInteger: FormatError_IntegerSpecifierGivenNonInteger(); break;
		case EFormatCheck::FloatSpecifierGivenNonFloat: FormatError_FloatSpecifierGivenNonFloat(); break;
		case EFormatCheck::PercentSNeedsTCharPointer: FormatError_PercentSNeedsTCharPointer_UseStarOnFString(); break;
		case EFormatCheck::PercentHsNeedsAnsiOrUtf8Pointer: FormatError_PercentHsNeedsAnsiOrUtf8Pointer(); break;
		case EFormatCheck::PercentCNeedsCharacter: FormatError_PercentCNeedsCharacter(); break;
		case EFormatCheck::PercentPNeedsPointer: FormatError_PercentPNeedsPointer(); break;
		case EFormatCheck::StarNeedsInteger: FormatError_StarWidthOrPrecisionNeedsInt(); break;
		case EFormatCheck::UnknownConversion: FormatError_UnknownConversionSpecifier(); break;
		case EFormatCheck::IncompleteSpecifier: FormatError_IncompleteSpecifierAtEnd(); break;
		case EFormatCheck::PercentNNotSupported: FormatError_PercentNIsNotSupported(); break;
		}
	}
}

namespace UE::Core
{
	/**
	 * A format literal whose specifiers have been matched with Types while compiling.
	 * Only TEXT() literals convert to it; a format held in a variable does not compile, as in the engine.
	 */
	template <typename FmtCharType, typename... Types>
	struct TCheckedFormatString
	{
		const FmtCharType* FormatString;

		template <std::size_t N>
		consteval TCheckedFormatString(const FmtCharType (&InFormat)[N])
			: FormatString(InFormat)
		{
			constexpr Private::FormatString::EArgKind Kinds[] = { Private::FormatString::ClassifyArg<Types>()..., Private::FormatString::EArgKind::None };
			Private::FormatString::ReportAtCompileTime(Private::FormatString::CheckFormat(InFormat, static_cast<int32>(N) - 1, Kinds, static_cast<int32>(sizeof...(Types))));
		}
	};
}
