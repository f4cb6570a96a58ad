#include "Engine/TimelineTemplate.h"
#include "UObject/UnrealType.h"

IMPLEMENT_CLASS(UTimelineTemplate,
	UE_NATIVE_PROPERTY(FFloatProperty, TimelineLength, CPF_None);
	UE_NATIVE_PROPERTY(FBoolProperty, bAutoPlay, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bLoop, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bReplicated, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bIgnoreTimeDilation, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FStructProperty, TimelineGuid, CPF_None, TBaseStructure<FGuid>::Get());
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
