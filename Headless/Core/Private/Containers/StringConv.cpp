#include "Containers/StringConv.h"

#include <cstring>

namespace
{
	constexpr char32_t ReplacementCharacter = 0xFFFD;

	bool IsHighSurrogate(uint32 Unit) { return Unit >= 0xD800 && Unit <= 0xDBFF; }
	bool IsLowSurrogate(uint32 Unit) { return Unit >= 0xDC00 && Unit <= 0xDFFF; }

	void PushUtf8(std::string& Out, char32_t Code)
	{
		if (Code < 0x80)
		{
			Out.push_back(static_cast<char>(Code));
		}
		else if (Code < 0x800)
		{
			const char Bytes[2] = { static_cast<char>(0xC0 | (Code >> 6)), static_cast<char>(0x80 | (Code & 0x3F)) };
			Out.append(Bytes, 2);
		}
		else if (Code < 0x10000)
		{
			const char Bytes[3] = { static_cast<char>(0xE0 | (Code >> 12)), static_cast<char>(0x80 | ((Code >> 6) & 0x3F)), static_cast<char>(0x80 | (Code & 0x3F)) };
			Out.append(Bytes, 3);
		}
		else
		{
			const char Bytes[4] = { static_cast<char>(0xF0 | (Code >> 18)), static_cast<char>(0x80 | ((Code >> 12) & 0x3F)),
				static_cast<char>(0x80 | ((Code >> 6) & 0x3F)), static_cast<char>(0x80 | (Code & 0x3F)) };
			Out.append(Bytes, 4);
		}
	}

	void PushUtf16(std::u16string& Out, char32_t Code)
	{
		if (Code < 0x10000)
		{
			Out.push_back(static_cast<char16_t>(Code));
		}
		else
		{
			Code -= 0x10000;
			Out.push_back(static_cast<char16_t>(0xD800 + (Code >> 10)));
			Out.push_back(static_cast<char16_t>(0xDC00 + (Code & 0x3FF)));
		}
	}

	/**
	 * Decodes one code point at Src[Index], advancing Index. Follows the Unicode "maximal subpart"
	 * practice: an invalid lead byte, or a sequence cut short, costs one U+FFFD for the bytes
	 * consumed so far, and decoding resumes at the first byte that could not continue it.
	 */
	char32_t DecodeUtf8(const unsigned char* Src, int32 Len, int32& Index)
	{
		const unsigned char Lead = Src[Index++];
		if (Lead < 0x80)
		{
			return Lead;
		}

		int32 Needed = 0;
		char32_t Code = 0;
		unsigned char Min = 0x80;
		unsigned char Max = 0xBF;
		if (Lead >= 0xC2 && Lead <= 0xDF)
		{
			Needed = 1;
			Code = Lead & 0x1F;
		}
		else if (Lead >= 0xE0 && Lead <= 0xEF)
		{
			Needed = 2;
			Code = Lead & 0x0F;
			// No overlong forms, and no encoded surrogates.
			Min = Lead == 0xE0 ? 0xA0 : 0x80;
			Max = Lead == 0xED ? 0x9F : 0xBF;
		}
		else if (Lead >= 0xF0 && Lead <= 0xF4)
		{
			Needed = 3;
			Code = Lead & 0x07;
			// No overlong forms, nothing above U+10FFFF.
			Min = Lead == 0xF0 ? 0x90 : 0x80;
			Max = Lead == 0xF4 ? 0x8F : 0xBF;
		}
		else
		{
			return ReplacementCharacter;
		}

		for (int32 Continuation = 0; Continuation < Needed; ++Continuation)
		{
			if (Index >= Len)
			{
				return ReplacementCharacter;
			}
			const unsigned char Byte = Src[Index];
			const unsigned char Low = Continuation == 0 ? Min : 0x80;
			const unsigned char High = Continuation == 0 ? Max : 0xBF;
			if (Byte < Low || Byte > High)
			{
				return ReplacementCharacter;
			}
			Code = (Code << 6) | (Byte & 0x3F);
			++Index;
		}
		return Code;
	}
}

namespace StringConv
{
	void AppendUtf16AsUtf8(std::string& Out, const TCHAR* Src, int32 Len)
	{
		if (!Src || Len <= 0)
		{
			return;
		}
		Out.reserve(Out.size() + static_cast<SIZE_T>(Len));
		for (int32 Index = 0; Index < Len; ++Index)
		{
			const uint32 Unit = Src[Index];
			if (Unit < 0x80)
			{
				Out.push_back(static_cast<char>(Unit));
			}
			else if (IsHighSurrogate(Unit) && Index + 1 < Len && IsLowSurrogate(Src[Index + 1]))
			{
				const char32_t Code = 0x10000 + ((Unit - 0xD800) << 10) + (static_cast<uint32>(Src[Index + 1]) - 0xDC00);
				PushUtf8(Out, Code);
				++Index;
			}
			else if (IsHighSurrogate(Unit) || IsLowSurrogate(Unit))
			{
				PushUtf8(Out, ReplacementCharacter);
			}
			else
			{
				PushUtf8(Out, Unit);
			}
		}
	}

	void AppendUtf8AsUtf16(std::u16string& Out, const char* Src, int32 Len)
	{
		if (!Src || Len <= 0)
		{
			return;
		}
		Out.reserve(Out.size() + static_cast<SIZE_T>(Len));
		const unsigned char* Bytes = reinterpret_cast<const unsigned char*>(Src);
		int32 Index = 0;
		while (Index < Len)
		{
			// Runs of ASCII are the common case in names and JSON keys.
			if (Bytes[Index] < 0x80)
			{
				Out.push_back(static_cast<char16_t>(Bytes[Index++]));
				continue;
			}
			PushUtf16(Out, DecodeUtf8(Bytes, Len, Index));
		}
	}

	void AppendBytesAsUtf16(std::u16string& Out, const char* Src, int32 Len)
	{
		if (!Src || Len <= 0)
		{
			return;
		}
		const SIZE_T Start = Out.size();
		Out.resize(Start + static_cast<SIZE_T>(Len));
		for (int32 Index = 0; Index < Len; ++Index)
		{
			Out[Start + static_cast<SIZE_T>(Index)] = static_cast<char16_t>(static_cast<unsigned char>(Src[Index]));
		}
	}

	int32 Utf8LengthOfUtf16(const TCHAR* Src, int32 Len)
	{
		int32 Bytes = 0;
		for (int32 Index = 0; Index < Len; ++Index)
		{
			const uint32 Unit = Src[Index];
			if (Unit < 0x80)
			{
				Bytes += 1;
			}
			else if (Unit < 0x800)
			{
				Bytes += 2;
			}
			else if (IsHighSurrogate(Unit) && Index + 1 < Len && IsLowSurrogate(Src[Index + 1]))
			{
				Bytes += 4;
				++Index;
			}
			else
			{
				Bytes += 3;
			}
		}
		return Bytes;
	}
}

namespace
{
	int32 Utf16Length(const TCHAR* Source)
	{
		int32 Len = 0;
		if (Source)
		{
			while (Source[Len])
			{
				++Len;
			}
		}
		return Len;
	}
}

FTCHARToUTF8::FTCHARToUTF8(const TCHAR* Source)
	: FTCHARToUTF8(Source, Utf16Length(Source))
{
}

FTCHARToUTF8::FTCHARToUTF8(const TCHAR* Source, int32 SourceLen)
{
	StringConv::AppendUtf16AsUtf8(Converted, Source, SourceLen);
}

FUTF8ToTCHAR::FUTF8ToTCHAR(const ANSICHAR* Source)
	: FUTF8ToTCHAR(Source, Source ? static_cast<int32>(std::strlen(Source)) : 0)
{
}

FUTF8ToTCHAR::FUTF8ToTCHAR(const ANSICHAR* Source, int32 SourceLen)
{
	StringConv::AppendUtf8AsUtf16(Converted, Source, SourceLen);
}

FUTF8ToTCHAR::FUTF8ToTCHAR(const UTF8CHAR* Source)
	: FUTF8ToTCHAR(reinterpret_cast<const ANSICHAR*>(Source))
{
}

FUTF8ToTCHAR::FUTF8ToTCHAR(const UTF8CHAR* Source, int32 SourceLen)
	: FUTF8ToTCHAR(reinterpret_cast<const ANSICHAR*>(Source), SourceLen)
{
}

FANSIToTCHAR::FANSIToTCHAR(const ANSICHAR* Source)
	: FANSIToTCHAR(Source, Source ? static_cast<int32>(std::strlen(Source)) : 0)
{
}

FANSIToTCHAR::FANSIToTCHAR(const ANSICHAR* Source, int32 SourceLen)
{
	StringConv::AppendBytesAsUtf16(Converted, Source, SourceLen);
}
