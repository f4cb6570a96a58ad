#pragma once

#include "CoreMinimal.h"
#include "Math/Range.h"
#include "Misc/FrameNumber.h"
#include "UObject/Class.h"

/** The reflected form of a frame range's bound (the engine's FFrameNumberRangeBound of CoreUObject). */
struct FFrameNumberRangeBound : TRangeBound<FFrameNumber>
{
	static UScriptStruct* StaticStruct();
};

/** The reflected form of TRange<FFrameNumber> (the engine's FFrameNumberRange of CoreUObject). */
struct FFrameNumberRange : TRange<FFrameNumber>
{
	static UScriptStruct* StaticStruct();
};

static_assert(sizeof(FFrameNumberRange) == sizeof(TRange<FFrameNumber>), "the reflected range must lay out as the range it reflects");

/** A sequence's range in frames, as a movie scene keeps its playback range. */
struct FMovieSceneFrameRange
{
	MOVIESCENE_API static UScriptStruct* StaticStruct();

	FMovieSceneFrameRange() = default;
	FMovieSceneFrameRange(const TRange<FFrameNumber>& InValue) : Value(InValue) {}

	TRange<FFrameNumber> Value;
};

template <> UEnum* StaticEnum<ERangeBoundTypes::Type>();
