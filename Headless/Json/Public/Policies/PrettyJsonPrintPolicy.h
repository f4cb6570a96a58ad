#pragma once

#include "CoreMinimal.h"
#include "Policies/JsonPrintPolicy.h"

/**
 * Prints JSON for people to read: one member or element per line, indented with tabs, a space
 * after each colon. Lines end with "\n", the line terminator of the engine's Linux and Mac builds
 * (its Windows builds write "\r\n").
 */
template <class CharType>
struct TPrettyJsonPrintPolicy : public TJsonPrintPolicy<CharType>
{
	static FORCEINLINE void WriteLineTerminator(FJsonPrintStream* Stream)
	{
		Stream->Write(CharType('\n'));
	}

	static FORCEINLINE void WriteTabs(FJsonPrintStream* Stream, int32 Count)
	{
		for (int32 Index = 0; Index < Count; ++Index)
		{
			Stream->Write(CharType('\t'));
		}
	}

	static FORCEINLINE void WriteSpace(FJsonPrintStream* Stream)
	{
		Stream->Write(CharType(' '));
	}
};
