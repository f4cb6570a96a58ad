#pragma once

#include "CoreMinimal.h"
#include "Policies/JsonPrintPolicy.h"

/** Prints JSON with no whitespace at all: {"a":1,"b":[true,null]}. */
template <class CharType>
struct TCondensedJsonPrintPolicy : public TJsonPrintPolicy<CharType>
{
	static FORCEINLINE void WriteLineTerminator(FJsonPrintStream* Stream) {}
	static FORCEINLINE void WriteTabs(FJsonPrintStream* Stream, int32 Count) {}
	static FORCEINLINE void WriteSpace(FJsonPrintStream* Stream) {}
};
