#pragma once

#include "CoreTypes.h"

#include <string>
#include <string_view>

/**
 * UTF-16 <-> UTF-8 conversion with the engine's converter names. Malformed input never reaches
 * the output as garbage or undefined behaviour: a lone surrogate in UTF-16, and any invalid,
 * overlong or truncated sequence in UTF-8, becomes U+FFFD.
 */
namespace StringConv
{
	/** Appends Len UTF-16 code units of Src to Out as UTF-8. */
	CORE_API void AppendUtf16AsUtf8(std::string& Out, const TCHAR* Src, int32 Len);
	/** Appends Len bytes of UTF-8 from Src to Out as UTF-16. */
	CORE_API void AppendUtf8AsUtf16(std::u16string& Out, const char* Src, int32 Len);
	/** Appends Len bytes of Src, each widened to one code unit (Latin-1). */
	CORE_API void AppendBytesAsUtf16(std::u16string& Out, const char* Src, int32 Len);
	/** The number of UTF-8 bytes Len UTF-16 code units need (after replacement of lone surrogates). */
	CORE_API int32 Utf8LengthOfUtf16(const TCHAR* Src, int32 Len);
}

/**
 * A UTF-8 copy of a UTF-16 string, kept for the life of this object. Get() is null-terminated;
 * Length() is in bytes, without the terminator.
 */
class FTCHARToUTF8
{
public:
	explicit FTCHARToUTF8(const TCHAR* Source);
	FTCHARToUTF8(const TCHAR* Source, int32 SourceLen);

	const ANSICHAR* Get() const { return Converted.c_str(); }
	int32 Length() const { return static_cast<int32>(Converted.size()); }

private:
	std::string Converted;
};

/** A UTF-16 copy of a UTF-8 string; Length() is in code units. */
class FUTF8ToTCHAR
{
public:
	explicit FUTF8ToTCHAR(const ANSICHAR* Source);
	FUTF8ToTCHAR(const ANSICHAR* Source, int32 SourceLen);
	explicit FUTF8ToTCHAR(const UTF8CHAR* Source);
	FUTF8ToTCHAR(const UTF8CHAR* Source, int32 SourceLen);

	const TCHAR* Get() const { return Converted.c_str(); }
	int32 Length() const { return static_cast<int32>(Converted.size()); }

private:
	std::u16string Converted;
};

/** Byte widening for 7-bit text, as the engine's ANSI converter. */
class FANSIToTCHAR
{
public:
	explicit FANSIToTCHAR(const ANSICHAR* Source);
	FANSIToTCHAR(const ANSICHAR* Source, int32 SourceLen);

	const TCHAR* Get() const { return Converted.c_str(); }
	int32 Length() const { return static_cast<int32>(Converted.size()); }

private:
	std::u16string Converted;
};

// The pointers live as long as the temporary converter: until the end of the full expression.
#define TCHAR_TO_UTF8(Str) ((ANSICHAR*)FTCHARToUTF8((const TCHAR*)(Str)).Get())
#define UTF8_TO_TCHAR(Str) ((TCHAR*)FUTF8ToTCHAR((const ANSICHAR*)(Str)).Get())
#define ANSI_TO_TCHAR(Str) ((TCHAR*)FANSIToTCHAR((const ANSICHAR*)(Str)).Get())
#define TCHAR_TO_ANSI(Str) TCHAR_TO_UTF8(Str)
