#pragma once

#include "CoreMinimal.h"
#include "MovieSceneSequence.h"
#include "UObject/ObjectPtr.h"

class UMovieScene;

/** An animation of a Widget Blueprint: a sequence whose movie scene animates the blueprint's widgets. */
class UWidgetAnimation : public UMovieSceneSequence
{
	DECLARE_CLASS(UWidgetAnimation, UMovieSceneSequence, CLASS_None, CASTCLASS_None, TEXT("/Script/UMG"), UMG_API)

public:
	UMG_API UWidgetAnimation();

	/** Owned by the animation; made with it. */
	TObjectPtr<UMovieScene> MovieScene;

	virtual UMovieScene* GetMovieScene() const override { return MovieScene; }
	/** The label when one was given, else the object's name. */
	UMG_API virtual FText GetDisplayName() const override;
	UMG_API void SetDisplayLabel(const FString& InDisplayLabel);
	const FString& GetDisplayLabel() const { return DisplayLabel; }
	/** Seconds at the start and end of the movie scene's playback range. */
	UMG_API float GetStartTime() const;
	UMG_API float GetEndTime() const;

	UMG_API virtual void PostInitProperties() override;

private:
	FString DisplayLabel;
};
