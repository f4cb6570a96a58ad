#include "K2Node_CallParentFunction.h"

#include "BlueprintNodeStatics.h"
#include "EdGraphSchema_K2.h"
#include "UObject/Script.h"

#define LOCTEXT_NAMESPACE "K2Node"

IMPLEMENT_CLASS(UK2Node_CallParentFunction)

UK2Node_CallParentFunction::UK2Node_CallParentFunction()
{
}

FText UK2Node_CallParentFunction::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	FText FunctionName;
	if (const UFunction* Function = FunctionReference.ResolveMember<UFunction>(GetBlueprintClassFromNode()))
	{
		FunctionName = UE::BlueprintGraph::Private::GetUserFacingFunctionName(Function, true);
	}
	else
	{
		FunctionName = FText::FromString(FName::NameToDisplayString(FunctionReference.GetMemberName().ToString(), false));
	}
	FFormatNamedArguments Args;
	Args.Add(TEXT("FunctionName"), FunctionName);
	return FText::Format(LOCTEXT("CallSuperFunction", "Parent: {FunctionName}"), Args);
}

void UK2Node_CallParentFunction::AllocateDefaultPins()
{
	Super::AllocateDefaultPins();
	// The target is always this object, seen as its parent class.
	if (UEdGraphPin* SelfPin = GetDefault<UEdGraphSchema_K2>()->FindSelfPin(*this, EGPD_Input))
	{
		SelfPin->bHidden = true;
	}
}

void UK2Node_CallParentFunction::SetFromFunction(const UFunction* Function)
{
	if (!Function)
	{
		return;
	}
	bDefaultsToPureFunc = Function->HasAnyFunctionFlags(FUNC_BlueprintPure);
	UClass* OwnerClass = UE::BlueprintGraph::Private::GetAuthoritativeClass(Function->GetOwnerClass());
	FGuid FunctionGuid;
	FMemberReference::GetGuidFromClassByFieldName(OwnerClass, Function->GetFName(), false, FunctionGuid);
	FunctionReference.SetDirect(Function->GetFName(), FunctionGuid, OwnerClass, false);
}

#undef LOCTEXT_NAMESPACE
