#pragma once

#include "CoreMinimal.h"
#include "Misc/Guid.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"

/** How a timeline's length is measured. */
enum ETimelineLengthMode : int
{
	TL_TimelineLength,
	TL_LastKeyFrame,
};

class UCurveFloat;
class UCurveVector;
class UCurveLinearColor;
class UTimelineTemplate;
class UScriptStruct;

/** What every track has: a name, and whether its curve is an asset of its own rather than the timeline's. */
struct FTTTrackBase
{
	FName TrackName;
	bool bIsExternalCurve = false;

	ENGINE_API static UScriptStruct* StaticStruct();

	FName GetTrackName() const { return TrackName; }
	/** Renames the track and whatever generated names follow from its name. */
	ENGINE_API void SetTrackName(FName NewTrackName, UTimelineTemplate* OwningTimeline);
	bool operator==(const FTTTrackBase& Other) const { return TrackName == Other.TrackName && bIsExternalCurve == Other.bIsExternalCurve; }
};

/** A track whose keys are times at which an exec output of the timeline node fires. */
struct FTTEventTrack : public FTTTrackBase
{
	/** The function the compiler makes to fire the event. */
	FName FunctionName;
	TObjectPtr<UCurveFloat> CurveKeys;

	ENGINE_API static UScriptStruct* StaticStruct();
	ENGINE_API void SetTrackName(FName NewTrackName, UTimelineTemplate* OwningTimeline);
};

/** A track whose value the timeline writes into a property of the generated class. */
struct FTTPropertyTrack : public FTTTrackBase
{
	FName PropertyName;

	ENGINE_API static UScriptStruct* StaticStruct();
	ENGINE_API void SetTrackName(FName NewTrackName, UTimelineTemplate* OwningTimeline);
};

struct FTTFloatTrack : public FTTPropertyTrack
{
	TObjectPtr<UCurveFloat> CurveFloat;
	ENGINE_API static UScriptStruct* StaticStruct();
};

struct FTTVectorTrack : public FTTPropertyTrack
{
	TObjectPtr<UCurveVector> CurveVector;
	ENGINE_API static UScriptStruct* StaticStruct();
};

struct FTTLinearColorTrack : public FTTPropertyTrack
{
	TObjectPtr<UCurveLinearColor> CurveLinearColor;
	ENGINE_API static UScriptStruct* StaticStruct();
};

/** One entry of the order in which the timeline editor lists tracks of all kinds. */
struct FTTTrackId
{
	enum ETrackType : int32
	{
		Event,
		FloatInterp,
		VectorInterp,
		LinearColorInterp,
		Property,
		MAX
	};

	int32 TrackType = 0;
	int32 TrackIndex = 0;

	ENGINE_API static UScriptStruct* StaticStruct();
	bool operator==(const FTTTrackId& Other) const { return TrackType == Other.TrackType && TrackIndex == Other.TrackIndex; }
};

/** A timeline a Blueprint declares, with its tracks; the timeline node's pins follow from them. */
class UTimelineTemplate : public UObject
{
	DECLARE_CLASS(UTimelineTemplate, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/Engine"), ENGINE_API)

public:
	ENGINE_API UTimelineTemplate();

	float TimelineLength = 5.0f;
	bool bAutoPlay = false;
	bool bLoop = false;
	bool bReplicated = false;
	bool bIgnoreTimeDilation = false;
	FGuid TimelineGuid;
	TEnumAsByte<ETimelineLengthMode> LengthMode = TL_TimelineLength;

	TArray<FTTEventTrack> EventTracks;
	TArray<FTTFloatTrack> FloatTracks;
	TArray<FTTVectorTrack> VectorTracks;
	TArray<FTTLinearColorTrack> LinearColorTracks;
	/** Every track in the order the timeline editor shows them. */
	TArray<FTTTrackId> TrackDisplayOrder;

	/** False when a track of any kind already uses the name (case ignored), or the name is None. */
	ENGINE_API bool IsNewTrackNameValid(FName NewTrackName) const;
	/** The name of the property a float, vector or colour track's value is written to. */
	ENGINE_API FName GetTrackPropertyName(FName TrackName) const;
	/** The name of the function that fires an event track. */
	ENGINE_API FName GetEventTrackFunctionName(int32 EventTrackIndex) const;
	ENGINE_API int32 GetNumDisplayTracks() const;
	ENGINE_API const FTTTrackId& GetDisplayTrackId(int32 DisplayTrackIndex) const;
	ENGINE_API void AddDisplayTrack(FTTTrackId NewTrackId);
	/** Removes the track from the display order, renumbering the later tracks of its kind. */
	ENGINE_API void RemoveDisplayTrack(int32 DisplayTrackIndex);
	/** The longest time any track's keys reach, or TimelineLength, as LengthMode says. */
	ENGINE_API float GetTimelineLength() const;

	/** The name of the template object made for a timeline variable: "<Name>_Template". */
	ENGINE_API static FString TimelineVariableNameToTemplateName(FName Name);
	/** The timeline variable's name: the template name without "_Template". */
	ENGINE_API FName GetVariableName() const;
	ENGINE_API FName GetUpdateFunctionName() const;
	ENGINE_API FName GetFinishedFunctionName() const;
	ENGINE_API FName GetDirectionPropertyName() const;
};
