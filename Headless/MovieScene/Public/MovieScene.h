#pragma once

#include "CoreMinimal.h"
#include "Math/Range.h"
#include "Misc/FrameNumber.h"
#include "Misc/FrameRate.h"
#include "MovieSceneFrameMigration.h"
#include "MovieSceneSignedObject.h"

/**
 * The timeline of a sequence: its playback range in ticks, the tick resolution those ticks are counted in and the
 * display rate its editor snaps to.
 */
class UMovieScene : public UMovieSceneSignedObject
{
	DECLARE_CLASS(UMovieScene, UMovieSceneSignedObject, CLASS_None, CASTCLASS_None, TEXT("/Script/MovieScene"), MOVIESCENE_API)

public:
	MOVIESCENE_API UMovieScene();

	/** Plays Duration ticks from Start; a negative duration is refused and leaves the range as it was. */
	MOVIESCENE_API void SetPlaybackRange(FFrameNumber Start, int32 Duration, bool bAlwaysMarkDirty = true);
	/** Takes a range with a closed lower bound; an open or empty range is refused and leaves the range as it was. */
	MOVIESCENE_API void SetPlaybackRange(const TRange<FFrameNumber>& NewRange, bool bAlwaysMarkDirty = true);
	TRange<FFrameNumber> GetPlaybackRange() const { return PlaybackRange.Value; }

	FFrameRate GetTickResolution() const { return TickResolution; }
	/** Sets the resolution without moving anything already timed in ticks. */
	MOVIESCENE_API void SetTickResolutionDirectly(FFrameRate InTickResolution);
	FFrameRate GetDisplayRate() const { return DisplayRate; }
	MOVIESCENE_API void SetDisplayRate(FFrameRate InDisplayRate);

private:
	FMovieSceneFrameRange PlaybackRange;
	FFrameRate TickResolution = FFrameRate(24000, 1);
	FFrameRate DisplayRate = FFrameRate(30, 1);
};
