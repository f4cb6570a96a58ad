#include "Animation/WidgetAnimation.h"

#include "MovieScene.h"
#include "UObject/UnrealType.h"
#include "UObject/UObjectGlobals.h"

IMPLEMENT_CLASS(UWidgetAnimation,
	UE_NATIVE_PROPERTY(FObjectProperty, MovieScene, CPF_TObjectPtr | CPF_InstancedReference, UMovieScene::StaticClass());
	UE_NATIVE_PROPERTY(FStrProperty, DisplayLabel, CPF_None);
)

UWidgetAnimation::UWidgetAnimation() = default;

void UWidgetAnimation::PostInitProperties()
{
	UMovieSceneSequence::PostInitProperties();
	// Every animation owns its movie scene from the start; a package being read fills the one made here.
	if (!HasAnyFlags(RF_ClassDefaultObject | RF_ArchetypeObject) && !MovieScene)
	{
		MovieScene = NewObject<UMovieScene>(this, GetFName(), RF_Transactional);
	}
}

FText UWidgetAnimation::GetDisplayName() const
{
	return DisplayLabel.IsEmpty() ? UMovieSceneSequence::GetDisplayName() : FText::FromString(DisplayLabel);
}

void UWidgetAnimation::SetDisplayLabel(const FString& InDisplayLabel)
{
	DisplayLabel = InDisplayLabel;
}

float UWidgetAnimation::GetStartTime() const
{
	if (!MovieScene || !MovieScene->GetPlaybackRange().HasLowerBound())
	{
		return 0.0f;
	}
	return float(MovieScene->GetTickResolution().AsSeconds(MovieScene->GetPlaybackRange().GetLowerBoundValue()));
}

float UWidgetAnimation::GetEndTime() const
{
	if (!MovieScene || !MovieScene->GetPlaybackRange().HasUpperBound())
	{
		return 0.0f;
	}
	return float(MovieScene->GetTickResolution().AsSeconds(MovieScene->GetPlaybackRange().GetUpperBoundValue()));
}
