#pragma once

// Text reading shared by the property kinds' import code, following the engine's token rules.

#include "CoreMinimal.h"

namespace UE::CoreUObject::Private
{
	inline void SkipWhitespace(const TCHAR*& Str)
	{
		while (Str && FChar::IsWhitespace(*Str))
		{
			++Str;
		}
	}

	/**
	 * Reads a double-quoted string at Buffer with the engine's escapes (\\ \" \' \n \r \t \xH.. \uHHHH).
	 * False (nothing read) when Buffer does not start with a quote or the string is not closed on its line.
	 */
	bool ReadQuotedString(const TCHAR* Buffer, FString& Value, int32* OutNumCharsRead);

	/**
	 * Reads one token: a quoted string, or a run of letters, digits, '_', '-', '+' and non-ASCII characters
	 * (with bDottedNames also '.', '/' and ':'), or else a single character which is not consumed.
	 * Returns the text after the token, or null for a badly quoted string.
	 */
	const TCHAR* ReadToken(const TCHAR* Buffer, FString& String, bool bDottedNames = false);

	/**
	 * Skips the rest of a value inside a struct or container: up to the next ',' or ')' that is not
	 * inside parentheses or quotes. Null on unbalanced text.
	 */
	const TCHAR* SkipValueText(const TCHAR* Buffer);
}
