#include "K2Node_Event.h"

#include "BlueprintNodeStatics.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "K2Node_CallFunction.h"
#include "Kismet2/CompilerResultsLog.h"
#include "EdGraph/EdGraphSchema.h"
#include "UObject/Interface.h"
#include "UObject/Script.h"

#define LOCTEXT_NAMESPACE "K2Node_Event"

using namespace UE::BlueprintGraph::Private;

IMPLEMENT_CLASS(UK2Node_Event,
	UE_NATIVE_PROPERTY(FStructProperty, EventReference, CPF_None, FMemberReference::StaticStruct());
	UE_NATIVE_PROPERTY(FBoolProperty, bOverrideFunction, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bInternalEvent, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FNameProperty, CustomFunctionName, CPF_None);
	UE_NATIVE_PROPERTY(FUInt32Property, FunctionFlags, CPF_None);
	Class->Interfaces.Add(FImplementedInterface(UK2Node_EventNodeInterface::StaticClass(), 0, false));
)

IMPLEMENT_CLASS(UK2Node_EventNodeInterface)

const FName UK2Node_Event::DelegateOutputName(TEXT("OutputDelegate"));

UK2Node_Event::UK2Node_Event()
{
}

TSharedPtr<FEdGraphSchemaAction> UK2Node_Event::GetEventNodeAction(const FText& ActionCategory)
{
	return MakeShared<FEdGraphSchemaAction>(ActionCategory, GetNodeTitle(ENodeTitleType::ListView), GetTooltipText(), 0);
}

FText UK2Node_Event::GetLocalizedNetString(uint32 NetFlags, bool bCalling)
{
	return UE::BlueprintGraph::Private::GetLocalizedNetString(NetFlags, bCalling);
}

FName UK2Node_Event::GetFunctionName() const
{
	return bOverrideFunction ? EventReference.GetMemberName() : CustomFunctionName;
}

UFunction* UK2Node_Event::FindEventSignatureFunction() const
{
	return EventReference.ResolveMember<UFunction>(GetBlueprintClassFromNode());
}

void UK2Node_Event::FixupEventReference(bool bForce)
{
	if (!bOverrideFunction || HasAnyFlags(RF_Transient) || EventReference.IsSelfContext())
	{
		return;
	}
	const UBlueprint* Blueprint = GetBlueprint();
	UClass* BlueprintType = Blueprint ? (Blueprint->SkeletonGeneratedClass ? Blueprint->SkeletonGeneratedClass.Get() : Blueprint->ParentClass.Get()) : nullptr;
	UClass* ParentType = EventReference.GetMemberParentClass();
	if (!BlueprintType || !(bForce || !ParentType || !(BlueprintType->IsChildOf(ParentType) || BlueprintType->ImplementsInterface(ParentType))))
	{
		return;
	}
	// The event now belongs to whichever ancestor first declared a function of that name.
	const FName EventName = EventReference.GetMemberName();
	const UFunction* Declared = BlueprintType->FindFunctionByName(EventName);
	while (Declared && Declared->GetSuperFunction())
	{
		Declared = Declared->GetSuperFunction();
	}
	if (Declared)
	{
		if (UClass* SuperClass = GetAuthoritativeClass(Declared->GetOwnerClass()))
		{
			EventReference.SetExternalMember(EventName, SuperClass);
		}
	}
}

void UK2Node_Event::UpdateDelegatePin(bool bSilent)
{
	UEdGraphPin* Pin = FindPin(DelegateOutputName);
	if (!Pin)
	{
		return;
	}
	const UObject* OldSignature = FMemberReference::ResolveSimpleMemberReference<UFunction>(Pin->PinType.PinSubCategoryMemberReference);
	UFunction* NewSignature = nullptr;
	if (bOverrideFunction)
	{
		NewSignature = FindEventSignatureFunction();
	}
	else if (const UBlueprint* Blueprint = GetBlueprint())
	{
		NewSignature = Blueprint->SkeletonGeneratedClass ? Blueprint->SkeletonGeneratedClass->FindFunctionByName(CustomFunctionName) : nullptr;
	}
	Pin->PinType.PinSubCategoryObject = nullptr;
	FMemberReference::FillSimpleMemberReference<UFunction>(NewSignature, Pin->PinType.PinSubCategoryMemberReference);
	if (OldSignature != NewSignature && !bSilent)
	{
		PinTypeChanged(Pin);
	}
}

void UK2Node_Event::AllocateDefaultPins()
{
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Delegate, DelegateOutputName);
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_Then);

	// A signature that moved to another class since the last compile is looked for before giving up.
	const UFunction* Function = FindEventSignatureFunction();
	if (!Function)
	{
		FixupEventReference(true);
		Function = FindEventSignatureFunction();
	}
	if (Function)
	{
		CreatePinsForFunctionEntryExit(Function, true);
	}
	UpdateDelegatePin(true);

	Super::AllocateDefaultPins();
}

void UK2Node_Event::PostReconstructNode()
{
	UpdateDelegatePin();
	Super::PostReconstructNode();
}

void UK2Node_Event::PinConnectionListChanged(UEdGraphPin* Pin)
{
	if (Pin && Pin->PinName == DelegateOutputName)
	{
		UpdateDelegatePin();
	}
	Super::PinConnectionListChanged(Pin);
}

FText UK2Node_Event::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	if (!bOverrideFunction && !CustomFunctionName.IsNone())
	{
		return FText::FromName(CustomFunctionName);
	}
	FText FunctionName = FText::FromName(EventReference.GetMemberName());
	if (const UFunction* Function = FindEventSignatureFunction())
	{
		FunctionName = UE::BlueprintGraph::Private::GetUserFacingFunctionName(Function, false);
	}
	FFormatNamedArguments Args;
	Args.Add(TEXT("FunctionName"), FunctionName);
	FText Title = FText::Format(NSLOCTEXT("K2Node", "Event_Name", "Event {FunctionName}"), Args);

	const UClass* SignatureClass = EventReference.GetMemberParentClass(GetBlueprintClassFromNode());
	if (TitleType == ENodeTitleType::FullTitle && SignatureClass && SignatureClass->IsChildOf(UInterface::StaticClass()))
	{
		FText InterfaceName = SignatureClass->GetDisplayNameText();
		if (const UBlueprint* InterfaceBlueprint = UBlueprint::GetBlueprintFromClass(SignatureClass))
		{
			InterfaceName = FText::FromString(InterfaceBlueprint->GetName());
		}
		FFormatNamedArguments FullArgs;
		FullArgs.Add(TEXT("Title"), Title);
		FullArgs.Add(TEXT("InterfaceClass"), InterfaceName);
		Title = FText::Format(LOCTEXT("EventFromInterface", "{Title}\nFrom {InterfaceClass}"), FullArgs);
	}
	return Title;
}

FText UK2Node_Event::GetTooltipText() const
{
	const UFunction* Function = FindEventSignatureFunction();
	if (!Function)
	{
		return FText::GetEmpty();
	}
	const FText FunctionTooltip = FText::FromString(UE::BlueprintGraph::Private::GetDefaultTooltipForFunction(Function));
	if (!bOverrideFunction && !CustomFunctionName.IsNone())
	{
		return FunctionTooltip;
	}
	FText Subtitle;
	if (Function->HasAllFunctionFlags(FUNC_BlueprintCosmetic))
	{
		Subtitle = NSLOCTEXT("K2Node", "ClientEvent", "Cosmetic. This event is only for cosmetic, non-gameplay actions.");
	}
	else if (Function->HasAllFunctionFlags(FUNC_BlueprintAuthorityOnly))
	{
		Subtitle = NSLOCTEXT("K2Node", "ServerEvent", "Authority Only. This event only fires on the server.");
	}
	if (Subtitle.IsEmpty())
	{
		return FunctionTooltip;
	}
	FFormatNamedArguments Args;
	Args.Add(TEXT("FunctionTooltip"), FunctionTooltip);
	Args.Add(TEXT("ClientString"), Subtitle);
	return FText::Format(LOCTEXT("Event_SubtitledTooltip", "{FunctionTooltip}\n\n{ClientString}"), Args);
}

FText UK2Node_Event::GetKeywords() const
{
	const UFunction* Function = FindEventSignatureFunction();
	return Function ? UK2Node_CallFunction::GetKeywordsForFunction(Function) : FText::GetEmpty();
}

FString UK2Node_Event::GetDocumentationLink() const
{
	if (const UClass* SignatureClass = EventReference.GetMemberParentClass(GetBlueprintClassFromNode()))
	{
		return FString::Printf(TEXT("Shared/Types/%s%s"), SignatureClass->GetPrefixCPP(), *SignatureClass->GetName());
	}
	return FString();
}

void UK2Node_Event::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	Super::ValidateNodeDuringCompilation(MessageLog);
	if (!bOverrideFunction)
	{
		return;
	}
	const UFunction* Function = FindEventSignatureFunction();
	if (!Function)
	{
		// Implementing an event nobody declares cannot compile.
		MessageLog.Error(*FText::Format(NSLOCTEXT("KismetCompiler", "MissingEventSig_ErrorFmt", "Missing Event '{0}' for @@"), FText::FromString(EventReference.GetMemberName().ToString())).ToString(), this);
	}
	else if (Function->HasAnyFunctionFlags(FUNC_Const | FUNC_BlueprintPure))
	{
		MessageLog.Note(*FText::Format(NSLOCTEXT("KismetCompiler", "EventOverridingConst_Fmt", "@@: Event overriding '{0}', which is const, implicitly writes to this object. Please convert this to a function - ESPECIALLY if this event has Object parameters"), FText::FromString(EventReference.GetMemberName().ToString())).ToString(), this);
	}
}

#undef LOCTEXT_NAMESPACE
