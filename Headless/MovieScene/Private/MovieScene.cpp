#include "MovieScene.h"
#include "MovieSceneSequence.h"

#include "UObject/UnrealType.h"

#include <cmath>

// The engine keeps these range and frame types in Core and CoreUObject; they are registered under CoreUObject's
// script package so that their paths are the engine's.

template <> UEnum* StaticEnum<ERangeBoundTypes::Type>()
{
	static UEnum* PrivateStaticEnum = nullptr;
	if (!PrivateStaticEnum)
	{
		::UE::CoreUObject::Private::ConstructNativeEnum(PrivateStaticEnum, TEXT("/Script/CoreUObject"), TEXT("ERangeBoundTypes"), TEXT("ERangeBoundTypes::Type"),
			[](UEnum* Enum)
			{
				TArray<TPair<FName, int64>> Entries;
				Entries.Emplace(TEXT("ERangeBoundTypes::Exclusive"), 0);
				Entries.Emplace(TEXT("ERangeBoundTypes::Inclusive"), 1);
				Entries.Emplace(TEXT("ERangeBoundTypes::Open"), 2);
				Enum->SetEnums(Entries, UEnum::ECppForm::Namespaced, EEnumFlags::None, true);
				Enum->SetMetaData(TEXT("BlueprintType"), TEXT("true"));
			});
	}
	return PrivateStaticEnum;
}
static ::UE::CoreUObject::Private::FRegisterCompiledInType Z_CompiledInEnum_ERangeBoundTypes([]() -> UObject* { return StaticEnum<ERangeBoundTypes::Type>(); });

IMPLEMENT_SCRIPT_STRUCT(FFrameNumber, TEXT("/Script/CoreUObject"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FIntProperty, Value, CPF_Edit | CPF_BlueprintVisible);
)

IMPLEMENT_SCRIPT_STRUCT(FFrameRate, TEXT("/Script/CoreUObject"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FIntProperty, Numerator, CPF_Edit | CPF_BlueprintVisible);
	UE_NATIVE_PROPERTY(FIntProperty, Denominator, CPF_Edit | CPF_BlueprintVisible);
)

IMPLEMENT_SCRIPT_STRUCT(FFrameNumberRangeBound, TEXT("/Script/CoreUObject"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FByteProperty, Type, CPF_Edit, StaticEnum<ERangeBoundTypes::Type>());
	UE_NATIVE_PROPERTY(FStructProperty, Value, CPF_Edit, FFrameNumber::StaticStruct());
)

IMPLEMENT_SCRIPT_STRUCT(FFrameNumberRange, TEXT("/Script/CoreUObject"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FStructProperty, LowerBound, CPF_Edit, FFrameNumberRangeBound::StaticStruct());
	UE_NATIVE_PROPERTY(FStructProperty, UpperBound, CPF_Edit, FFrameNumberRangeBound::StaticStruct());
)

IMPLEMENT_SCRIPT_STRUCT(FMovieSceneFrameRange, TEXT("/Script/MovieScene"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FStructProperty, Value, CPF_None, FFrameNumberRange::StaticStruct());
)

FFrameNumber FFrameRate::AsFrameNumber(double TimeInSeconds) const
{
	return FFrameNumber(int32(std::floor(TimeInSeconds * AsDecimal())));
}

IMPLEMENT_CLASS(UMovieSceneSignedObject)

IMPLEMENT_CLASS(UMovieSceneSequence)

IMPLEMENT_CLASS(UMovieScene,
	UE_NATIVE_PROPERTY(FStructProperty, PlaybackRange, CPF_None, FMovieSceneFrameRange::StaticStruct());
	UE_NATIVE_PROPERTY(FStructProperty, TickResolution, CPF_None, FFrameRate::StaticStruct());
	UE_NATIVE_PROPERTY(FStructProperty, DisplayRate, CPF_None, FFrameRate::StaticStruct());
)

UMovieSceneSignedObject::UMovieSceneSignedObject() = default;
UMovieSceneSequence::UMovieSceneSequence() = default;
UMovieScene::UMovieScene() = default;

FText UMovieSceneSequence::GetDisplayName() const
{
	return FText::FromName(GetFName());
}

void UMovieScene::SetPlaybackRange(FFrameNumber Start, int32 Duration, bool bAlwaysMarkDirty)
{
	if (Duration < 0)
	{
		return;
	}
	SetPlaybackRange(TRange<FFrameNumber>(Start, Start + FFrameNumber(Duration)), bAlwaysMarkDirty);
}

void UMovieScene::SetPlaybackRange(const TRange<FFrameNumber>& NewRange, bool bAlwaysMarkDirty)
{
	// A playback range needs a start and an end to play between.
	if (!NewRange.HasLowerBound() || !NewRange.HasUpperBound() || NewRange.GetUpperBoundValue() < NewRange.GetLowerBoundValue())
	{
		return;
	}
	if (PlaybackRange.Value == NewRange)
	{
		return;
	}
	if (bAlwaysMarkDirty)
	{
		Modify();
	}
	PlaybackRange.Value = NewRange;
}

void UMovieScene::SetTickResolutionDirectly(FFrameRate InTickResolution)
{
	if (InTickResolution.IsValid() && InTickResolution.Numerator > 0)
	{
		TickResolution = InTickResolution;
	}
}

void UMovieScene::SetDisplayRate(FFrameRate InDisplayRate)
{
	if (InDisplayRate.IsValid() && InDisplayRate.Numerator > 0)
	{
		DisplayRate = InDisplayRate;
	}
}
