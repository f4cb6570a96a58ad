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

/** A timeline a Blueprint declares; its tracks come with the timeline node. */
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

	/** The name of the template object made for a timeline variable: "<Name>_Template". */
	ENGINE_API static FString TimelineVariableNameToTemplateName(FName Name);
	/** The timeline variable's name: the template name without "_Template". */
	ENGINE_API FName GetVariableName() const;
	ENGINE_API FName GetUpdateFunctionName() const;
	ENGINE_API FName GetFinishedFunctionName() const;
	ENGINE_API FName GetDirectionPropertyName() const;
};
