#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"

// The engine reads "Key=Value" text (the InitFromString of the math types) with FParse::Value
// and comma lists ("1,2,3" pin defaults, transform parts) with FDefaultValueHelper. These are
// the same rules for the headless Core's own use.
namespace UE::Core::Private
{
	/**
	 * Finds Match in Stream ignoring ASCII case and skipping text between double quotes, then
	 * returns the value after it: a quoted value up to the closing quote, otherwise the text after
	 * leading blanks up to the first ',', ')', space, tab or line break. At most 255 characters.
	 */
	bool ParseValueToken(const TCHAR* Stream, const TCHAR* Match, FString& OutToken);

	// Numbers are read from the start of the token as the C library would: "1.5abc" gives 1.5,
	// text with no number gives 0. Like the engine, finding the key is what decides success.
	bool ParseValue(const TCHAR* Stream, const TCHAR* Match, double& OutValue);
	bool ParseValue(const TCHAR* Stream, const TCHAR* Match, float& OutValue);
	bool ParseValue(const TCHAR* Stream, const TCHAR* Match, int32& OutValue);
	/** Optional '-' then decimal digits; anything else ends the number. */
	bool ParseValue(const TCHAR* Stream, const TCHAR* Match, int64& OutValue);
	/** Fails when the value is zero but the token does not start with a digit. */
	bool ParseValue(const TCHAR* Stream, const TCHAR* Match, uint8& OutValue);

	/** [sign] digits [. digits] [e [sign] digits] [f], blanks allowed around it. */
	bool IsStringValidFloat(const TCHAR* Start, const TCHAR* End);
}
