#include "Misc/ParseValue.h"

#include "Math/UnrealMathUtility.h"
#include "Misc/Char.h"
#include "Misc/CString.h"

namespace UE::Core::Private
{
	namespace
	{
		constexpr int32 MaxTokenLength = 255;

		bool IsTokenTerminator(TCHAR Char)
		{
			return Char == TEXT(',') || Char == TEXT(')') || Char == TEXT(' ') || Char == TEXT('\r') || Char == TEXT('\n') || Char == TEXT('\t');
		}

		bool IsLeadingBlank(TCHAR Char)
		{
			return Char == TEXT(' ') || Char == TEXT('\r') || Char == TEXT('\n') || Char == TEXT('\t');
		}

		TCHAR FoldAscii(TCHAR Char)
		{
			return (Char >= TEXT('a') && Char <= TEXT('z')) ? TCHAR(Char - TEXT('a') + TEXT('A')) : Char;
		}

		// Case-insensitive search that ignores matches starting inside a quoted stretch.
		const TCHAR* FindOutsideQuotes(const TCHAR* Stream, const TCHAR* Match)
		{
			if (!Stream || !Match || !*Match)
			{
				return nullptr;
			}
			bool bInQuotes = false;
			for (const TCHAR* Cursor = Stream; *Cursor; ++Cursor)
			{
				if (!bInQuotes)
				{
					int32 Offset = 0;
					while (Match[Offset] && Cursor[Offset] && FoldAscii(Cursor[Offset]) == FoldAscii(Match[Offset]))
					{
						++Offset;
					}
					if (!Match[Offset])
					{
						return Cursor;
					}
				}
				if (*Cursor == TEXT('"'))
				{
					bInQuotes = !bInQuotes;
				}
			}
			return nullptr;
		}

		// The stand-in for the engine's fixed 256-character buffer: longer values are cut.
		bool DigitStart(const FString& Token)
		{
			return !Token.IsEmpty() && Token[0] >= TEXT('0') && Token[0] <= TEXT('9');
		}

		bool IsBlank(TCHAR Char)
		{
			return FChar::IsWhitespace(Char) || FChar::IsLinebreak(Char) || Char == TEXT('\r');
		}
	}

	bool ParseValueToken(const TCHAR* Stream, const TCHAR* Match, FString& OutToken)
	{
		OutToken.Reset();
		const TCHAR* Found = FindOutsideQuotes(Stream, Match);
		if (!Found)
		{
			return false;
		}

		const TCHAR* ValueStart = Found + FCString::Strlen(Match);
		const TCHAR* ValueEnd = nullptr;
		if (*ValueStart == TEXT('"'))
		{
			++ValueStart;
			ValueEnd = ValueStart;
			while (*ValueEnd && *ValueEnd != TEXT('"'))
			{
				++ValueEnd;
			}
		}
		else
		{
			while (IsLeadingBlank(*ValueStart))
			{
				++ValueStart;
			}
			ValueEnd = ValueStart;
			while (*ValueEnd && !IsTokenTerminator(*ValueEnd))
			{
				++ValueEnd;
			}
		}

		const int32 Length = FMath::Min(int32(ValueEnd - ValueStart), MaxTokenLength);
		OutToken = FString::ConstructFromPtrSize(ValueStart, Length);
		return true;
	}

	bool ParseValue(const TCHAR* Stream, const TCHAR* Match, double& OutValue)
	{
		FString Token;
		if (!ParseValueToken(Stream, Match, Token))
		{
			return false;
		}
		OutValue = FCString::Atod(*Token);
		return true;
	}

	bool ParseValue(const TCHAR* Stream, const TCHAR* Match, float& OutValue)
	{
		FString Token;
		if (!ParseValueToken(Stream, Match, Token))
		{
			return false;
		}
		OutValue = FCString::Atof(*Token);
		return true;
	}

	bool ParseValue(const TCHAR* Stream, const TCHAR* Match, int32& OutValue)
	{
		FString Token;
		if (!ParseValueToken(Stream, Match, Token))
		{
			return false;
		}
		OutValue = FCString::Atoi(*Token);
		return true;
	}

	bool ParseValue(const TCHAR* Stream, const TCHAR* Match, int64& OutValue)
	{
		FString Token;
		if (!ParseValueToken(Stream, Match, Token))
		{
			return false;
		}
		const TCHAR* Cursor = *Token;
		const bool bNegative = *Cursor == TEXT('-');
		Cursor += bNegative ? 1 : 0;
		// Accumulate unsigned so a long run of digits wraps instead of overflowing a signed value.
		uint64 Magnitude = 0;
		while (*Cursor >= TEXT('0') && *Cursor <= TEXT('9'))
		{
			Magnitude = Magnitude * 10u + uint64(*Cursor - TEXT('0'));
			++Cursor;
		}
		OutValue = int64(bNegative ? (0u - Magnitude) : Magnitude);
		return true;
	}

	bool ParseValue(const TCHAR* Stream, const TCHAR* Match, uint8& OutValue)
	{
		FString Token;
		if (!ParseValueToken(Stream, Match, Token))
		{
			return false;
		}
		OutValue = uint8(FCString::Atoi(*Token));
		return OutValue != 0 || DigitStart(Token);
	}

	bool IsStringValidFloat(const TCHAR* Start, const TCHAR* End)
	{
		auto SkipBlanks = [&Start, End]()
		{
			while (Start < End && IsBlank(*Start))
			{
				++Start;
			}
			return Start < End;
		};
		auto At = [&Start, End](TCHAR Char) { return Start < End && *Start == Char; };
		auto SkipDigits = [&Start, End]()
		{
			while (Start < End && *Start >= TEXT('0') && *Start <= TEXT('9'))
			{
				++Start;
			}
		};

		if (!SkipBlanks())
		{
			return false;
		}
		if (At(TEXT('-')) || At(TEXT('+')))
		{
			++Start;
		}
		if (!SkipBlanks())
		{
			return false;
		}
		SkipDigits();
		if (At(TEXT('.')))
		{
			++Start;
		}
		SkipDigits();
		if (At(TEXT('e')) || At(TEXT('E')))
		{
			++Start;
			if (At(TEXT('-')) || At(TEXT('+')))
			{
				++Start;
			}
		}
		SkipDigits();
		if (At(TEXT('f')) || At(TEXT('F')))
		{
			++Start;
		}
		return !SkipBlanks();
	}
}
