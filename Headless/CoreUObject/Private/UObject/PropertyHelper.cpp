#include "PropertyHelper.h"

namespace UE::CoreUObject::Private
{
	namespace
	{
		int32 HexDigitValue(TCHAR Char)
		{
			if (Char >= TEXT('0') && Char <= TEXT('9'))
			{
				return Char - TEXT('0');
			}
			if (Char >= TEXT('a') && Char <= TEXT('f'))
			{
				return Char - TEXT('a') + 10;
			}
			if (Char >= TEXT('A') && Char <= TEXT('F'))
			{
				return Char - TEXT('A') + 10;
			}
			return -1;
		}
	}

	bool ReadQuotedString(const TCHAR* Buffer, FString& Value, int32* OutNumCharsRead)
	{
		const TCHAR* Start = Buffer;
		if (*Buffer != TEXT('"'))
		{
			return false;
		}
		++Buffer;
		FString Result;
		for (;;)
		{
			const TCHAR Char = *Buffer;
			if (Char == 0 || Char == TEXT('"') || Char == TEXT('\n') || Char == TEXT('\r'))
			{
				break;
			}
			if (Char != TEXT('\\'))
			{
				Result.AppendChar(Char);
				++Buffer;
				continue;
			}
			++Buffer;
			const TCHAR Escaped = *Buffer;
			switch (Escaped)
			{
			case TEXT('\\'): Result.AppendChar(TEXT('\\')); ++Buffer; break;
			case TEXT('"'): Result.AppendChar(TEXT('"')); ++Buffer; break;
			case TEXT('\''): Result.AppendChar(TEXT('\'')); ++Buffer; break;
			case TEXT('n'): Result.AppendChar(TEXT('\n')); ++Buffer; break;
			case TEXT('r'): Result.AppendChar(TEXT('\r')); ++Buffer; break;
			case TEXT('t'): Result.AppendChar(TEXT('\t')); ++Buffer; break;
			case TEXT('x'):
			case TEXT('u'):
			{
				// \x takes up to four hex digits, \u exactly four: both name one UTF-16 unit.
				const int32 MaxDigits = 4;
				int32 Digits = 0;
				uint32 Code = 0;
				const TCHAR* Cursor = Buffer + 1;
				while (Digits < MaxDigits && HexDigitValue(*Cursor) >= 0)
				{
					Code = Code * 16 + (uint32)HexDigitValue(*Cursor);
					++Cursor;
					++Digits;
				}
				if (Digits == 0 || (Escaped == TEXT('u') && Digits != 4))
				{
					Result.AppendChar(TEXT('\\'));
					Result.AppendChar(Escaped);
					++Buffer;
				}
				else
				{
					Result.AppendChar((TCHAR)Code);
					Buffer = Cursor;
				}
				break;
			}
			case 0:
				return false;
			default:
				// Unknown escapes are kept as written.
				Result.AppendChar(TEXT('\\'));
				Result.AppendChar(Escaped);
				++Buffer;
				break;
			}
		}
		if (*Buffer != TEXT('"'))
		{
			return false;
		}
		++Buffer;
		Value += Result;
		if (OutNumCharsRead)
		{
			*OutNumCharsRead = (int32)(Buffer - Start);
		}
		return true;
	}

	const TCHAR* ReadToken(const TCHAR* Buffer, FString& String, bool bDottedNames)
	{
		if (*Buffer == TEXT('"'))
		{
			int32 NumCharsRead = 0;
			if (!ReadQuotedString(Buffer, String, &NumCharsRead))
			{
				return nullptr;
			}
			return Buffer + NumCharsRead;
		}
		auto IsTokenChar = [bDottedNames](TCHAR Char) {
			return FChar::IsAlnum(Char) || Char == TEXT('_') || Char == TEXT('-') || Char == TEXT('+') || Char > 255
				|| (bDottedNames && (Char == TEXT('.') || Char == TEXT('/') || Char == TEXT(':')));
		};
		if (FChar::IsAlnum(*Buffer) || (bDottedNames && *Buffer == TEXT('/')) || *Buffer > 255)
		{
			while (*Buffer && IsTokenChar(*Buffer))
			{
				String.AppendChar(*Buffer++);
			}
		}
		else if (*Buffer)
		{
			// A single other character is reported but not consumed, as the engine does.
			String.AppendChar(*Buffer);
		}
		return Buffer;
	}

	const TCHAR* SkipValueText(const TCHAR* Buffer)
	{
		int32 Depth = 0;
		while (*Buffer && *Buffer != TEXT('\r') && *Buffer != TEXT('\n') && (Depth > 0 || (*Buffer != TEXT(')') && *Buffer != TEXT(','))))
		{
			if (*Buffer == TEXT('"'))
			{
				++Buffer;
				while (*Buffer && *Buffer != TEXT('"') && *Buffer != TEXT('\n') && *Buffer != TEXT('\r'))
				{
					if (*Buffer == TEXT('\\') && Buffer[1])
					{
						++Buffer;
					}
					++Buffer;
				}
				if (*Buffer != TEXT('"'))
				{
					return nullptr;
				}
			}
			else if (*Buffer == TEXT('('))
			{
				++Depth;
			}
			else if (*Buffer == TEXT(')'))
			{
				--Depth;
			}
			++Buffer;
		}
		return Depth == 0 ? Buffer : nullptr;
	}
}
