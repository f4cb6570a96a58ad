#include "Engine/TimelineTemplate.h"

#include "Curves/CurveFloat.h"
#include "UObject/UnrealType.h"

// Each track kind reflects its inherited members itself, so every kind stands alone in saved text.
IMPLEMENT_SCRIPT_STRUCT(FTTTrackBase, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FNameProperty, TrackName, CPF_None);
	UE_NATIVE_PROPERTY(FBoolProperty, bIsExternalCurve, CPF_None, 0, (uint32)sizeof(bool), true);
)
IMPLEMENT_SCRIPT_STRUCT(FTTEventTrack, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FNameProperty, TrackName, CPF_None);
	UE_NATIVE_PROPERTY(FBoolProperty, bIsExternalCurve, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FNameProperty, FunctionName, CPF_None);
	UE_NATIVE_PROPERTY(FObjectProperty, CurveKeys, CPF_TObjectPtr, UCurveFloat::StaticClass());
)
IMPLEMENT_SCRIPT_STRUCT(FTTPropertyTrack, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FNameProperty, TrackName, CPF_None);
	UE_NATIVE_PROPERTY(FBoolProperty, bIsExternalCurve, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FNameProperty, PropertyName, CPF_None);
)
IMPLEMENT_SCRIPT_STRUCT(FTTFloatTrack, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FNameProperty, TrackName, CPF_None);
	UE_NATIVE_PROPERTY(FBoolProperty, bIsExternalCurve, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FNameProperty, PropertyName, CPF_None);
	UE_NATIVE_PROPERTY(FObjectProperty, CurveFloat, CPF_TObjectPtr, UCurveFloat::StaticClass());
)
IMPLEMENT_SCRIPT_STRUCT(FTTVectorTrack, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FNameProperty, TrackName, CPF_None);
	UE_NATIVE_PROPERTY(FBoolProperty, bIsExternalCurve, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FNameProperty, PropertyName, CPF_None);
	UE_NATIVE_PROPERTY(FObjectProperty, CurveVector, CPF_TObjectPtr, UCurveVector::StaticClass());
)
IMPLEMENT_SCRIPT_STRUCT(FTTLinearColorTrack, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FNameProperty, TrackName, CPF_None);
	UE_NATIVE_PROPERTY(FBoolProperty, bIsExternalCurve, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FNameProperty, PropertyName, CPF_None);
	UE_NATIVE_PROPERTY(FObjectProperty, CurveLinearColor, CPF_TObjectPtr, UCurveLinearColor::StaticClass());
)
IMPLEMENT_SCRIPT_STRUCT(FTTTrackId, TEXT("/Script/Engine"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FIntProperty, TrackType, CPF_None);
	UE_NATIVE_PROPERTY(FIntProperty, TrackIndex, CPF_None);
)

namespace
{
	template <typename StructType>
	FArrayProperty* WithStructElements(FArrayProperty* Array)
	{
		Array->AddCppProperty(new FStructProperty(Array, Array->GetFName(), RF_Public | RF_MarkAsNative | RF_Transient, 0, CPF_None, StructType::StaticStruct()));
		return Array;
	}
}

IMPLEMENT_CLASS(UTimelineTemplate,
	UE_NATIVE_PROPERTY(FFloatProperty, TimelineLength, CPF_None);
	UE_NATIVE_PROPERTY(FBoolProperty, bAutoPlay, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bLoop, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bReplicated, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bIgnoreTimeDilation, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FStructProperty, TimelineGuid, CPF_None, TBaseStructure<FGuid>::Get());
	UE_NATIVE_PROPERTY(FByteProperty, LengthMode, CPF_None, (UEnum*)nullptr);
	WithStructElements<FTTEventTrack>(UE_NATIVE_PROPERTY(FArrayProperty, EventTracks, CPF_None));
	WithStructElements<FTTFloatTrack>(UE_NATIVE_PROPERTY(FArrayProperty, FloatTracks, CPF_None));
	WithStructElements<FTTVectorTrack>(UE_NATIVE_PROPERTY(FArrayProperty, VectorTracks, CPF_None));
	WithStructElements<FTTLinearColorTrack>(UE_NATIVE_PROPERTY(FArrayProperty, LinearColorTracks, CPF_None));
	WithStructElements<FTTTrackId>(UE_NATIVE_PROPERTY(FArrayProperty, TrackDisplayOrder, CPF_None));
)

namespace
{
	const TCHAR* const TemplatePostfix = TEXT("_Template");
}

UTimelineTemplate::UTimelineTemplate() = default;

FString UTimelineTemplate::TimelineVariableNameToTemplateName(FName Name)
{
	return Name.ToString() + TemplatePostfix;
}

FName UTimelineTemplate::GetVariableName() const
{
	FString Name = GetName();
	if (Name.EndsWith(TemplatePostfix))
	{
		Name = Name.LeftChop(FCString::Strlen(TemplatePostfix));
	}
	return FName(*Name);
}

FName UTimelineTemplate::GetUpdateFunctionName() const
{
	return FName(*FString::Printf(TEXT("%s__UpdateFunc"), *GetVariableName().ToString()));
}

FName UTimelineTemplate::GetFinishedFunctionName() const
{
	return FName(*FString::Printf(TEXT("%s__FinishedFunc"), *GetVariableName().ToString()));
}

FName UTimelineTemplate::GetDirectionPropertyName() const
{
	return FName(*FString::Printf(TEXT("%s__Direction_%s"), *GetVariableName().ToString(), *TimelineGuid.ToString()));
}

void FTTTrackBase::SetTrackName(FName NewTrackName, UTimelineTemplate* OwningTimeline)
{
	TrackName = NewTrackName;
}

void FTTEventTrack::SetTrackName(FName NewTrackName, UTimelineTemplate* OwningTimeline)
{
	FTTTrackBase::SetTrackName(NewTrackName, OwningTimeline);
	if (OwningTimeline)
	{
		FunctionName = FName(*FString::Printf(TEXT("%s__%s__EventFunc"), *OwningTimeline->GetVariableName().ToString(), *NewTrackName.ToString()));
	}
}

void FTTPropertyTrack::SetTrackName(FName NewTrackName, UTimelineTemplate* OwningTimeline)
{
	FTTTrackBase::SetTrackName(NewTrackName, OwningTimeline);
	if (OwningTimeline)
	{
		PropertyName = OwningTimeline->GetTrackPropertyName(NewTrackName);
	}
}

bool UTimelineTemplate::IsNewTrackNameValid(FName NewTrackName) const
{
	if (NewTrackName.IsNone())
	{
		return false;
	}
	auto Uses = [NewTrackName](const auto& Tracks)
	{
		return Tracks.ContainsByPredicate([NewTrackName](const FTTTrackBase& Track) { return Track.TrackName == NewTrackName; });
	};
	return !Uses(EventTracks) && !Uses(FloatTracks) && !Uses(VectorTracks) && !Uses(LinearColorTracks);
}

FName UTimelineTemplate::GetTrackPropertyName(FName TrackName) const
{
	// The guid keeps two timelines' tracks of the same name apart in the generated class.
	return FName(*FString::Printf(TEXT("%s_%s_%s"), *GetVariableName().ToString(), *TrackName.ToString(), *TimelineGuid.ToString()));
}

FName UTimelineTemplate::GetEventTrackFunctionName(int32 EventTrackIndex) const
{
	if (!EventTracks.IsValidIndex(EventTrackIndex))
	{
		return NAME_None;
	}
	return FName(*FString::Printf(TEXT("%s__%s__EventFunc"), *GetVariableName().ToString(), *EventTracks[EventTrackIndex].TrackName.ToString()));
}

int32 UTimelineTemplate::GetNumDisplayTracks() const
{
	return TrackDisplayOrder.Num();
}

const FTTTrackId& UTimelineTemplate::GetDisplayTrackId(int32 DisplayTrackIndex) const
{
	check(TrackDisplayOrder.IsValidIndex(DisplayTrackIndex));
	return TrackDisplayOrder[DisplayTrackIndex];
}

void UTimelineTemplate::AddDisplayTrack(FTTTrackId NewTrackId)
{
	TrackDisplayOrder.Add(NewTrackId);
}

void UTimelineTemplate::RemoveDisplayTrack(int32 DisplayTrackIndex)
{
	if (!TrackDisplayOrder.IsValidIndex(DisplayTrackIndex))
	{
		return;
	}
	const FTTTrackId Removed = TrackDisplayOrder[DisplayTrackIndex];
	TrackDisplayOrder.RemoveAt(DisplayTrackIndex);
	for (FTTTrackId& Id : TrackDisplayOrder)
	{
		if (Id.TrackType == Removed.TrackType && Id.TrackIndex > Removed.TrackIndex)
		{
			--Id.TrackIndex;
		}
	}
}

float UTimelineTemplate::GetTimelineLength() const
{
	if (LengthMode == TL_TimelineLength)
	{
		return TimelineLength;
	}
	float Longest = 0.f;
	auto Reach = [&Longest](const UCurveBase* Curve)
	{
		if (Curve)
		{
			float MinTime = 0.f;
			float MaxTime = 0.f;
			Curve->GetTimeRange(MinTime, MaxTime);
			Longest = FMath::Max(Longest, MaxTime);
		}
	};
	for (const FTTEventTrack& Track : EventTracks) { Reach(Track.CurveKeys); }
	for (const FTTFloatTrack& Track : FloatTracks) { Reach(Track.CurveFloat); }
	for (const FTTVectorTrack& Track : VectorTracks) { Reach(Track.CurveVector); }
	for (const FTTLinearColorTrack& Track : LinearColorTracks) { Reach(Track.CurveLinearColor); }
	return Longest;
}
