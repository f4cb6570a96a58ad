#pragma once

#include "CoreMinimal.h"

#include <ostream>
#include <string>

// Exact (case-sensitive) comparisons go through UTF-8 std::string, because FString's own ==
// ignores case and would hide the very differences these tests look for.
inline std::string U8(const FString& Str)
{
	return FStringToUTF8(Str);
}

inline std::string U8(const TCHAR* Str)
{
	return FStringToUTF8(FString(Str));
}

inline void PrintTo(const FString& Str, std::ostream* Out)
{
	*Out << '"' << U8(Str) << '"';
}

inline void PrintTo(const FName& Name, std::ostream* Out)
{
	*Out << "FName(" << U8(Name.ToString()) << ')';
}

inline void PrintTo(const FGuid& Guid, std::ostream* Out)
{
	*Out << "FGuid(" << U8(Guid.ToString()) << ')';
}
