#pragma once

#include "CoreMinimal.h"

/**
 * How well a candidate's keywords cover a request's keywords (FAssetOperationBase::CalculateKeywordSimilarity).
 * Rankings read CommonKeywords first (more is better) and Distance after (less is better).
 */
struct FKeywordSimilarity
{
	/** Share of the request covered by the candidate, 0 to 1: matched requested keywords, a near match counting in part. */
	float Coverage = 0.0f;

	/** Requested keywords that occur among the candidate's (without case; each requested keyword counts once). */
	int32 CommonKeywords = 0;

	/**
	 * Grows as the match gets worse: every requested keyword with no exact counterpart adds its edit
	 * distance to the nearest candidate keyword (its own length when nothing is near), and every
	 * candidate keyword left unmatched adds one.
	 */
	int32 Distance = 0;

	/** Distinct keywords on each side, as compared. */
	int32 RequestedKeywords = 0;
	int32 CandidateKeywords = 0;

	/** Candidate keywords that some requested keyword matched (exactly, run together, or misspelt). */
	int32 MatchedCandidateKeywords = 0;
};
