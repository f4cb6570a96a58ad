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

	// Deliberately not constexpr: reaching one of these while checking a format at compile time
	// is the error, and its name is the message.
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
	void FormatError_UnsupportedArgumentType();

	constexpr bool IsIntegerKind(EArgKind Kind) { return Kind == EArgKind::SignedInt || Kind == EArgKind::UnsignedInt; }

	/** Walks Format and fails the constant evaluation at the first mismatch. */
	constexpr void Validate(const TCHAR* Format, int32 FormatLen, const EArgKind* Kinds, int32 NumArgs)
	{
		int32 ArgIndex = 0;
		auto NextArg = [&]() -> EArgKind
		{
			if (ArgIndex >= NumArgs)
			{
				FormatError_TooFewArgumentsForFormat();
				return EArgKind::None;
			}
			return Kinds[ArgIndex++];
		};

		int32 Pos = 0;
		while (Pos < FormatLen)
		{
			if (Format[Pos] != TCHAR('%'))
			{
				++Pos;
				continue;
			}
			++Pos;
			if (Pos >= FormatLen)
			{
				FormatError_IncompleteSpecifierAtEnd();
				return;
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
				if (!IsIntegerKind(NextArg()))
				{
					FormatError_StarWidthOrPrecisionNeedsInt();
				}
				++Pos;
			}
			while (Pos < FormatLen && Format[Pos] >= TCHAR('0') && Format[Pos] <= TCHAR('9'))
			{
				++Pos;
			}
			if (Pos < FormatLen && Format[Pos] == TCHAR('.'))
			{
				++Pos;
				if (Pos < FormatLen && Format[Pos] == TCHAR('*'))
				{
					if (!IsIntegerKind(NextArg()))
					{
						FormatError_StarWidthOrPrecisionNeedsInt();
					}
					++Pos;
				}
				while (Pos < FormatLen && Format[Pos] >= TCHAR('0') && Format[Pos] <= TCHAR('9'))
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
				FormatError_IncompleteSpecifierAtEnd();
				return;
			}

			const TCHAR Conversion = Format[Pos++];
			switch (Conversion)
			{
			case TCHAR('d'): case TCHAR('i'): case TCHAR('u'): case TCHAR('o'): case TCHAR('x'): case TCHAR('X'):
				if (!IsIntegerKind(NextArg()))
				{
					FormatError_IntegerSpecifierGivenNonInteger();
				}
				break;
			case TCHAR('f'): case TCHAR('F'): case TCHAR('e'): case TCHAR('E'): case TCHAR('g'): case TCHAR('G'): case TCHAR('a'): case TCHAR('A'):
				if (NextArg() != EArgKind::Float)
				{
					FormatError_FloatSpecifierGivenNonFloat();
				}
				break;
			case TCHAR('c'): case TCHAR('C'):
				if (!IsIntegerKind(NextArg()))
				{
					FormatError_PercentCNeedsCharacter();
				}
				break;
			case TCHAR('s'): case TCHAR('S'):
			{
				const EArgKind Kind = NextArg();
				if (bShort)
				{
					if (Kind != EArgKind::AnsiPointer && Kind != EArgKind::Utf8Pointer && Kind != EArgKind::NullPointer)
					{
						FormatError_PercentHsNeedsAnsiOrUtf8Pointer();
					}
				}
				else if (Kind != EArgKind::TCharPointer && Kind != EArgKind::NullPointer)
				{
					FormatError_PercentSNeedsTCharPointer_UseStarOnFString();
				}
				break;
			}
			case TCHAR('p'):
			{
				const EArgKind Kind = NextArg();
				if (Kind != EArgKind::Pointer && Kind != EArgKind::TCharPointer && Kind != EArgKind::AnsiPointer && Kind != EArgKind::Utf8Pointer && Kind != EArgKind::NullPointer)
				{
					FormatError_PercentPNeedsPointer();
				}
				break;
			}
			case TCHAR('n'):
				FormatError_PercentNIsNotSupported();
				break;
			default:
				FormatError_UnknownConversionSpecifier();
				break;
			}
		}

		if (ArgIndex != NumArgs)
		{
			FormatError_TooManyArgumentsForFormat();
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
			Private::FormatString::Validate(InFormat, static_cast<int32>(N) - 1, Kinds, static_cast<int32>(sizeof...(Types)));
		}
	};
}
