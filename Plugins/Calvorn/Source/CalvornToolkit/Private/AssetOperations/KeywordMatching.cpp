#include "AssetOperationBase.h"

#include "Misc/Char.h"

// The keyword primitives of fuzzy node matching. A request ("Get Actor Location", "getactorlocation",
// "K2Node_CallFunction") and a menu entry are each turned into lower-case keywords; the similarity
// counts what the request shares with the entry, and the confidence says whether the best entry is
// close enough to take.

namespace
{
	bool IsWordChar(TCHAR Char)
	{
		// Letters outside ASCII belong to words too; only punctuation and spaces separate them.
		return FChar::IsAlnum(Char) || Char > 127;
	}

	/** Length of a node-class prefix ("K2Node", "UK2Node") starting at Index, or 0. */
	int32 MatchNodeClassPrefix(const FString& Text, int32 Index)
	{
		for (const TCHAR* Prefix : {TEXT("UK2Node"), TEXT("K2Node")})
		{
			const int32 Length = FCString::Strlen(Prefix);
			if (Index + Length > Text.Len())
			{
				continue;
			}
			if (!Text.Mid(Index, Length).Equals(Prefix, ESearchCase::IgnoreCase))
			{
				continue;
			}
			// Only a whole prefix: "K2NodeX" is not the prefix followed by a word, "K2Nodes" is a word.
			const int32 After = Index + Length;
			if (After == Text.Len() || !IsWordChar(Text[After]) || FChar::IsUpper(Text[After]))
			{
				return Length;
			}
		}
		return 0;
	}

	/** Splits one run of letters and digits into words at its case and digit boundaries. */
	void SplitRun(const FString& Run, TArray<FString>& OutWords)
	{
		const int32 Length = Run.Len();
		int32 WordStart = 0;
		auto EndWord = [&](int32 End)
		{
			if (End > WordStart)
			{
				OutWords.Add(Run.Mid(WordStart, End - WordStart));
			}
			WordStart = End;
		};

		for (int32 Index = 1; Index < Length; ++Index)
		{
			const TCHAR Prev = Run[Index - 1];
			const TCHAR Char = Run[Index];
			const bool bPrevDigit = FChar::IsDigit(Prev);
			const bool bDigit = FChar::IsDigit(Char);

			if (!bPrevDigit && bDigit)
			{
				// "K2": a single capital before digits is one token with them, as in engine names.
				const bool bSingleCapital = Index - WordStart == 1 && FChar::IsUpper(Prev);
				if (!bSingleCapital)
				{
					EndWord(Index);
				}
				continue;
			}
			if (bPrevDigit && !bDigit)
			{
				// "2D", "3D": one capital closing the token stays with the digits.
				const bool bNextEndsToken = Index + 1 >= Length || !FChar::IsLower(Run[Index + 1]);
				if (FChar::IsUpper(Char) && bNextEndsToken)
				{
					continue;
				}
				EndWord(Index);
				continue;
			}
			if (FChar::IsLower(Prev) && FChar::IsUpper(Char))
			{
				EndWord(Index);
				continue;
			}
			// "HTTPRequest": the last capital of a run starts the next word when a lower-case letter follows.
			if (FChar::IsUpper(Prev) && FChar::IsUpper(Char) && Index + 1 < Length && FChar::IsLower(Run[Index + 1]))
			{
				EndWord(Index);
			}
		}
		EndWord(Length);
	}

	void AddUnique(TArray<FString>& Keywords, const FString& Keyword)
	{
		// FString compares without case, so "Actor" and "actor" are one keyword.
		if (!Keyword.IsEmpty() && !Keywords.Contains(Keyword))
		{
			Keywords.Add(Keyword);
		}
	}

	/**
	 * The distinct keywords of an array, compared without case, in order, as pointers into it. A menu search
	 * compares one request with thousands of entries, so the usual few keywords stay on the stack and are
	 * never copied.
	 */
	class FDistinctKeywords
	{
	public:
		explicit FDistinctKeywords(const TArray<FString>& Keywords)
		{
			if (Keywords.Num() > InlineCount)
			{
				Overflow.Reserve(Keywords.Num());
			}
			for (const FString& Keyword : Keywords)
			{
				if (!Keyword.IsEmpty() && IndexOfByKey(Keyword) == INDEX_NONE)
				{
					Signature |= SignatureBit(Keyword);
					if (Keywords.Num() > InlineCount)
					{
						Overflow.Add(&Keyword);
					}
					else
					{
						Inline[Count] = &Keyword;
					}
					++Count;
				}
			}
		}

		int32 Num() const { return Count; }

		FDistinctKeywords(const FDistinctKeywords&) = delete;
		FDistinctKeywords& operator=(const FDistinctKeywords&) = delete;

		const FString& operator[](int32 Index) const { return *Items()[Index]; }

		int32 IndexOfByKey(const FString& Keyword) const
		{
			// Most words of a request are in none of a menu entry's words; their length and first letter tell so at once.
			if (Keyword.IsEmpty() || !(Signature & SignatureBit(Keyword)))
			{
				return INDEX_NONE;
			}
			for (int32 Index = 0; Index < Count; ++Index)
			{
				const FString& Held = (*this)[Index];
				if (Held.Len() == Keyword.Len() && FChar::ToLower(Held[0]) == FChar::ToLower(Keyword[0]) && Held == Keyword)
				{
					return Index;
				}
			}
			return INDEX_NONE;
		}

	private:
		const FString* const* Items() const { return Overflow.Num() > 0 ? Overflow.GetData() : Inline; }

		/** One of 64 bits for a word's length and first letter without case: equal words always share it. */
		static uint64 SignatureBit(const FString& Word)
		{
			const uint32 Hash = static_cast<uint32>(Word.Len()) * 31u + static_cast<uint32>(FChar::ToLower(Word[0]));
			return uint64(1) << (Hash % 64u);
		}

		uint64 Signature = 0;

		static constexpr int32 InlineCount = 48;
		const FString* Inline[InlineCount] = {};
		TArray<const FString*> Overflow;
		int32 Count = 0;
	};

	/** How far a keyword may be from another (in edits) and still count as a misspelling of it. */
	int32 NearMatchLimit(const FString& Keyword)
	{
		return Keyword.Len() >= 8 ? 2 : (Keyword.Len() >= 4 ? 1 : 0);
	}

	constexpr float NearMatchCredit = 0.75f;
}

TArray<FString> FAssetOperationBase::CreateKeywords(const FString& Text)
{
	TArray<FString> Keywords;
	AppendKeywords(Text, Keywords);
	return Keywords;
}

void FAssetOperationBase::AppendKeywords(const FString& Text, TArray<FString>& Keywords)
{
	const int32 Length = Text.Len();
	int32 Index = 0;
	while (Index < Length)
	{
		if (!IsWordChar(Text[Index]))
		{
			++Index;
			continue;
		}
		if (const int32 PrefixLength = MatchNodeClassPrefix(Text, Index))
		{
			AddUnique(Keywords, TEXT("k2node"));
			Index += PrefixLength;
			continue;
		}
		int32 End = Index;
		while (End < Length && IsWordChar(Text[End]))
		{
			++End;
		}
		TArray<FString> Words;
		SplitRun(Text.Mid(Index, End - Index), Words);
		for (const FString& Word : Words)
		{
			AddUnique(Keywords, Word.ToLower());
		}
		Index = End;
	}
}

namespace
{
	/** The characters a word holds, as bits: letters without case, digits, and one bit for anything else. */
	uint64 CharacterMask(const FString& Word)
	{
		uint64 Mask = 0;
		for (int32 Index = 0; Index < Word.Len(); ++Index)
		{
			const TCHAR Char = FChar::ToLower(Word[Index]);
			if (Char >= TEXT('a') && Char <= TEXT('z'))
			{
				Mask |= uint64(1) << (Char - TEXT('a'));
			}
			else if (Char >= TEXT('0') && Char <= TEXT('9'))
			{
				Mask |= uint64(1) << (26 + (Char - TEXT('0')));
			}
			else
			{
				Mask |= uint64(1) << 63;
			}
		}
		return Mask;
	}

	/** Set bits of a mask, by halves, quarters and bytes (no instruction for it is assumed). */
	int32 CountBits(uint64 Bits)
	{
		Bits = Bits - ((Bits >> 1) & 0x5555555555555555ull);
		Bits = (Bits & 0x3333333333333333ull) + ((Bits >> 2) & 0x3333333333333333ull);
		Bits = (Bits + (Bits >> 4)) & 0x0F0F0F0F0F0F0F0Full;
		return static_cast<int32>((Bits * 0x0101010101010101ull) >> 56);
	}

	/** The character masks of a word list, each made the first time a near-match search asks for it. */
	class FLazyCharacterMasks
	{
	public:
		explicit FLazyCharacterMasks(const FDistinctKeywords& InWords)
			: Words(InWords)
		{
		}

		uint64 Get(int32 Index)
		{
			if (Index >= InlineCount)
			{
				return CharacterMask(Words[Index]);
			}
			if (!(Known & (uint64(1) << Index)))
			{
				Masks[Index] = CharacterMask(Words[Index]);
				Known |= uint64(1) << Index;
			}
			return Masks[Index];
		}

	private:
		static constexpr int32 InlineCount = 48;
		const FDistinctKeywords& Words;
		uint64 Masks[InlineCount];
		uint64 Known = 0;
	};

	/**
	 * Whether two words may be within Limit edits, judged by the characters they hold: each edit brings in at most
	 * one character the other word lacks, so more missing kinds than the limit rule the pair out without the table.
	 */
	bool MayBeWithinEdits(uint64 MaskA, uint64 MaskB, int32 Limit)
	{
		return CountBits(MaskA & ~MaskB) <= Limit && CountBits(MaskB & ~MaskA) <= Limit;
	}

	/**
	 * The edit distance of A and B when it is at most Limit, otherwise Limit + 1. Scoring a request against every
	 * entry of a menu compares thousands of word pairs, nearly all far apart, so only the band of the table within
	 * Limit of its diagonal is filled (a path leaving it already costs more than the limit), and a row whose every
	 * value exceeds the limit ends the walk.
	 */
	int32 BoundedLevenshteinDistance(const FString& A, const FString& B, int32 Limit)
	{
		const FString& Short = A.Len() <= B.Len() ? A : B;
		const FString& Long = A.Len() <= B.Len() ? B : A;
		const int32 ShortLength = Short.Len();
		const int32 LongLength = Long.Len();
		const int32 Beyond = Limit + 1;
		if (LongLength - ShortLength > Limit)
		{
			return Beyond;
		}
		constexpr int32 StackRowLength = 64;
		if (ShortLength == 0 || ShortLength > StackRowLength)
		{
			return FMath::Min(FAssetOperationBase::LevenshteinDistance(A, B), Beyond);
		}
		TCHAR ShortLower[StackRowLength];
		for (int32 Column = 0; Column < ShortLength; ++Column)
		{
			ShortLower[Column] = FChar::ToLower(Short[Column]);
		}
		int32 Rows[2][StackRowLength + 1];
		int32* Previous = Rows[0];
		int32* Current = Rows[1];
		for (int32 Column = 0; Column <= ShortLength; ++Column)
		{
			Previous[Column] = Column <= Limit ? Column : Beyond;
		}
		for (int32 Row = 1; Row <= LongLength; ++Row)
		{
			const TCHAR LongChar = FChar::ToLower(Long[Row - 1]);
			const int32 First = FMath::Max(1, Row - Limit);
			const int32 Last = FMath::Min(ShortLength, Row + Limit);
			Current[First - 1] = (First == 1 && Row <= Limit) ? Row : Beyond;
			int32 RowMinimum = Current[First - 1];
			for (int32 Column = First; Column <= Last; ++Column)
			{
				const int32 Substitution = Previous[Column - 1] + (LongChar == ShortLower[Column - 1] ? 0 : 1);
				const int32 Value = FMath::Min(FMath::Min(Substitution, Beyond), FMath::Min(Previous[Column] + 1, Current[Column - 1] + 1));
				Current[Column] = Value;
				RowMinimum = FMath::Min(RowMinimum, Value);
			}
			if (Last < ShortLength)
			{
				Current[Last + 1] = Beyond;
			}
			if (RowMinimum > Limit)
			{
				return Beyond;
			}
			Swap(Previous, Current);
		}
		return FMath::Min(Previous[ShortLength], Beyond);
	}
}

FKeywordSimilarity FAssetOperationBase::CalculateKeywordSimilarity(const TArray<FString>& RequestedKeywords, const TArray<FString>& CandidateKeywords)
{
	const FDistinctKeywords Requested(RequestedKeywords);
	const FDistinctKeywords Candidate(CandidateKeywords);

	FKeywordSimilarity Similarity;
	Similarity.RequestedKeywords = Requested.Num();
	Similarity.CandidateKeywords = Candidate.Num();
	if (Requested.Num() == 0)
	{
		Similarity.Distance = Candidate.Num();
		return Similarity;
	}

	// Which candidate keywords some requested keyword matched; on the stack for the usual short entries.
	constexpr int32 InlineMatched = 48;
	bool InlineCandidateMatched[InlineMatched] = {};
	TArray<bool> HeapCandidateMatched;
	if (Candidate.Num() > InlineMatched)
	{
		HeapCandidateMatched.SetNumZeroed(Candidate.Num());
	}
	bool* CandidateMatched = Candidate.Num() > InlineMatched ? HeapCandidateMatched.GetData() : InlineCandidateMatched;
	float Credit = 0.0f;
	FLazyCharacterMasks CandidateMasks(Candidate);

	for (int32 RequestedIndex = 0; RequestedIndex < Requested.Num(); ++RequestedIndex)
	{
		const FString& Keyword = Requested[RequestedIndex];
		const int32 Exact = Candidate.IndexOfByKey(Keyword);
		if (Exact != INDEX_NONE)
		{
			++Similarity.CommonKeywords;
			CandidateMatched[Exact] = true;
			Credit += 1.0f;
			continue;
		}

		// A run-together request word ("getactorlocation") that spells out consecutive candidate
		// keywords ("get", "actor", "location") is the same words without their spaces.
		bool bJoined = false;
		for (int32 First = 0; First < Candidate.Num() && !bJoined; ++First)
		{
			int32 Offset = 0;
			for (int32 Last = First; Last < Candidate.Num(); ++Last)
			{
				const FString& Part = Candidate[Last];
				if (Part.IsEmpty() || Offset + Part.Len() > Keyword.Len() || FChar::ToLower(Keyword[Offset]) != FChar::ToLower(Part[0])
					|| FCString::Strnicmp(*Keyword + Offset, *Part, Part.Len()) != 0)
				{
					break;
				}
				Offset += Part.Len();
				if (Offset == Keyword.Len())
				{
					if (Last > First)
					{
						for (int32 Index = First; Index <= Last; ++Index)
						{
							CandidateMatched[Index] = true;
						}
						bJoined = true;
					}
					break;
				}
			}
		}
		if (bJoined)
		{
			++Similarity.CommonKeywords;
			Credit += 1.0f;
			continue;
		}

		// Otherwise the nearest candidate keyword decides: a misspelling gets part credit, and the
		// edits it takes (or the whole word, when nothing is near) make the match worse.
		const int32 Limit = NearMatchLimit(Keyword);
		int32 BestDistance = MAX_int32;
		int32 BestIndex = INDEX_NONE;
		// A limit of no edits admits only an exact match, which was looked for above.
		const uint64 KeywordMask = Limit > 0 ? CharacterMask(Keyword) : 0;
		for (int32 Index = 0; Limit > 0 && Index < Candidate.Num(); ++Index)
		{
			// Words whose lengths, or whose sets of characters, differ by more than the limit cannot be within it.
			if (FMath::Abs(Candidate[Index].Len() - Keyword.Len()) > Limit || !MayBeWithinEdits(KeywordMask, CandidateMasks.Get(Index), Limit))
			{
				continue;
			}
			const int32 Distance = BoundedLevenshteinDistance(Keyword, Candidate[Index], Limit);
			if (Distance < BestDistance)
			{
				BestDistance = Distance;
				BestIndex = Index;
			}
		}
		if (BestIndex != INDEX_NONE && BestDistance <= Limit)
		{
			CandidateMatched[BestIndex] = true;
			Credit += NearMatchCredit;
			Similarity.Distance += BestDistance;
		}
		else
		{
			Similarity.Distance += Keyword.Len();
		}
	}

	for (int32 Index = 0; Index < Candidate.Num(); ++Index)
	{
		const bool bMatched = CandidateMatched[Index];
		if (bMatched)
		{
			++Similarity.MatchedCandidateKeywords;
		}
		else
		{
			++Similarity.Distance;
		}
	}
	Similarity.Coverage = Credit / static_cast<float>(Requested.Num());
	return Similarity;
}

float FAssetOperationBase::CalculateMatchConfidence(const TArray<FString>& RequestedKeywords, const TArray<FString>& CandidateKeywords, const FKeywordSimilarity& Similarity)
{
	if (Similarity.RequestedKeywords <= 0 || Similarity.CandidateKeywords <= 0)
	{
		return 0.0f;
	}
	// Coverage of the request decides; the share of the candidate left unexplained lowers it a little,
	// so that of two entries covering a request, the one with fewer extra words is surer. A menu entry
	// carries its category and node class among its keywords, so that share is never large even for
	// an exact title, and it weighs a fifth at most.
	const float Unexplained = FMath::Clamp(static_cast<float>(Similarity.CandidateKeywords - Similarity.MatchedCandidateKeywords) / static_cast<float>(Similarity.CandidateKeywords), 0.0f, 1.0f);
	const float Confidence = Similarity.Coverage * (1.0f - 0.2f * Unexplained);
	return FMath::Clamp(Confidence, 0.0f, 1.0f);
}

int32 FAssetOperationBase::LevenshteinDistance(const FString& A, const FString& B)
{
	// Two rows of the edit table are enough; the shorter text runs along them. Short words (all of
	// a keyword search) keep their rows on the stack.
	const FString& Short = A.Len() <= B.Len() ? A : B;
	const FString& Long = A.Len() <= B.Len() ? B : A;
	const int32 ShortLength = Short.Len();
	const int32 LongLength = Long.Len();
	if (ShortLength == 0)
	{
		return LongLength;
	}

	constexpr int32 StackRowLength = 64;
	int32 StackRows[2][StackRowLength + 1];
	TArray<int32> HeapRows;
	int32* Previous = StackRows[0];
	int32* Current = StackRows[1];
	if (ShortLength > StackRowLength)
	{
		HeapRows.SetNumUninitialized(2 * (ShortLength + 1));
		Previous = HeapRows.GetData();
		Current = HeapRows.GetData() + ShortLength + 1;
	}

	for (int32 Column = 0; Column <= ShortLength; ++Column)
	{
		Previous[Column] = Column;
	}
	for (int32 Row = 1; Row <= LongLength; ++Row)
	{
		const TCHAR LongChar = FChar::ToLower(Long[Row - 1]);
		Current[0] = Row;
		for (int32 Column = 1; Column <= ShortLength; ++Column)
		{
			const int32 Substitution = Previous[Column - 1] + (LongChar == FChar::ToLower(Short[Column - 1]) ? 0 : 1);
			Current[Column] = FMath::Min(Substitution, FMath::Min(Previous[Column] + 1, Current[Column - 1] + 1));
		}
		Swap(Previous, Current);
	}
	return Previous[ShortLength];
}
