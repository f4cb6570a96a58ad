#include "Misc/StringFormatArg.h"

#include "Containers/Array.h"
#include "Containers/Map.h"

void FStringFormatArg::AppendTo(FString& Out) const
{
	switch (Type)
	{
	case Int: Out += LexToString(IntValue); break;
	case UInt: Out += LexToString(UIntValue); break;
	case Double: Out += LexToString(DoubleValue); break;
	case String: Out += StringValue; break;
	case StringLiteral: Out += StringLiteralValue; break;
	}
}

namespace
{
	/**
	 * Shared walk over "{...}" tokens. A backtick escapes a following brace or backtick; a token whose
	 * argument is not supplied is copied through as written, as is an unclosed brace.
	 */
	template <typename LookupType>
	FString FormatTokens(const TCHAR* Format, LookupType Lookup)
	{
		FString Out;
		if (!Format)
		{
			return Out;
		}
		const FString Pattern(Format);
		const int32 Length = Pattern.Len();
		Out.Reserve(Length);
		int32 Index = 0;
		while (Index < Length)
		{
			const TCHAR Char = Pattern[Index];
			if (Char == TCHAR('`') && Index + 1 < Length && (Pattern[Index + 1] == TCHAR('{') || Pattern[Index + 1] == TCHAR('}') || Pattern[Index + 1] == TCHAR('`')))
			{
				Out.AppendChar(Pattern[Index + 1]);
				Index += 2;
				continue;
			}
			if (Char != TCHAR('{'))
			{
				Out.AppendChar(Char);
				++Index;
				continue;
			}
			int32 Close = INDEX_NONE;
			for (int32 Scan = Index + 1; Scan < Length && Pattern[Scan] != TCHAR('{'); ++Scan)
			{
				if (Pattern[Scan] == TCHAR('}'))
				{
					Close = Scan;
					break;
				}
			}
			if (Close == INDEX_NONE)
			{
				Out.AppendChar(Char);
				++Index;
				continue;
			}
			const FString Name = Pattern.Mid(Index + 1, Close - Index - 1).TrimStartAndEnd();
			if (const FStringFormatArg* Arg = Lookup(Name))
			{
				Arg->AppendTo(Out);
			}
			else
			{
				Out.Append(*Pattern + Index, Close - Index + 1);
			}
			Index = Close + 1;
		}
		return Out;
	}
}

FString FString::Format(const TCHAR* InFormatString, const FStringFormatNamedArguments& InNamedArguments)
{
	return FormatTokens(InFormatString, [&InNamedArguments](const FString& Name) { return InNamedArguments.Find(Name); });
}

FString FString::Format(const TCHAR* InFormatString, const FStringFormatOrderedArguments& InOrderedArguments)
{
	return FormatTokens(InFormatString, [&InOrderedArguments](const FString& Name) -> const FStringFormatArg*
	{
		if (Name.IsEmpty() || Name.Len() > 9)
		{
			return nullptr;
		}
		for (const TCHAR Digit : Name)
		{
			if (!FChar::IsDigit(Digit))
			{
				return nullptr;
			}
		}
		const int32 Index = FCString::Atoi(*Name);
		return InOrderedArguments.IsValidIndex(Index) ? &InOrderedArguments[Index] : nullptr;
	});
}
