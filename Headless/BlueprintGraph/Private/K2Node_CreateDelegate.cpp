#include "K2Node_CreateDelegate.h"

#include "BlueprintNodeStatics.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Engine/MemberReference.h"
#include "K2Node_BaseMCDelegate.h"
#include "Kismet2/CompilerResultsLog.h"
#include "UObject/Script.h"

#define LOCTEXT_NAMESPACE "K2Node"

using namespace UE::BlueprintGraph::Private;

IMPLEMENT_CLASS(UK2Node_CreateDelegate,
	UE_NATIVE_PROPERTY(FNameProperty, SelectedFunctionName, CPF_None);
	UE_NATIVE_PROPERTY(FStructProperty, SelectedFunctionGuid, CPF_None, TBaseStructure<FGuid>::Get());
)

namespace
{
	const FName DelegateOutputName(TEXT("OutputDelegate"));
}

UK2Node_CreateDelegate::UK2Node_CreateDelegate()
{
}

void UK2Node_CreateDelegate::AllocateDefaultPins()
{
	UEdGraphPin* ObjectPin = CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Object, UObject::StaticClass(), UEdGraphSchema_K2::PN_Self);
	ObjectPin->PinFriendlyName = LOCTEXT("CreateDelegate_ObjectInputName", "Object");
	UEdGraphPin* DelegatePin = CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Delegate, DelegateOutputName);
	DelegatePin->PinFriendlyName = LOCTEXT("CreateDelegate_DelegateOutName", "Event");
	Super::AllocateDefaultPins();
}

FText UK2Node_CreateDelegate::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return LOCTEXT("CreateDelegate", "Create Event");
}

FText UK2Node_CreateDelegate::GetTooltipText() const
{
	return LOCTEXT("CreateDelegate_Tooltip", "Makes an event of the chosen function of Object, to bind to a dispatcher.");
}

FText UK2Node_CreateDelegate::GetMenuCategory() const
{
	return LOCTEXT("DelegatesCategory", "Event Dispatchers");
}

FName UK2Node_CreateDelegate::GetFunctionName() const
{
	return SelectedFunctionName;
}

UEdGraphPin* UK2Node_CreateDelegate::GetDelegateOutPin() const
{
	return FindPin(DelegateOutputName);
}

UEdGraphPin* UK2Node_CreateDelegate::GetObjectInPin() const
{
	return FindPin(UEdGraphSchema_K2::PN_Self);
}

void UK2Node_CreateDelegate::SetFunction(FName Name)
{
	SelectedFunctionName = Name;
	SelectedFunctionGuid.Invalidate();
}

UFunction* UK2Node_CreateDelegate::GetDelegateSignature() const
{
	const UEdGraphPin* Pin = GetDelegateOutPin();
	if (!Pin || Pin->LinkedTo.Num() == 0 || !Pin->LinkedTo[0])
	{
		return nullptr;
	}
	const UEdGraphPin* Linked = Pin->LinkedTo[0];
	if (Linked->PinType.PinCategory != UEdGraphSchema_K2::PC_Delegate)
	{
		return nullptr;
	}
	return FMemberReference::ResolveSimpleMemberReference<UFunction>(Linked->PinType.PinSubCategoryMemberReference);
}

UClass* UK2Node_CreateDelegate::GetScopeClass(bool bDontUseSkeletalClassForSelf) const
{
	const UEdGraphPin* Pin = GetObjectInPin();
	if (!Pin)
	{
		return nullptr;
	}
	bool bUseSelf = Pin->LinkedTo.Num() == 0;
	if (!bUseSelf && Pin->LinkedTo[0])
	{
		const UEdGraphPin* Linked = Pin->LinkedTo[0];
		bUseSelf = Linked->PinType.PinSubCategory == UEdGraphSchema_K2::PSC_Self;
		if (UClass* TrueScopeClass = Cast<UClass>(Linked->PinType.PinSubCategoryObject.Get()))
		{
			// A Blueprint's newest functions are in its skeleton class.
			if (const UBlueprint* ScopeBlueprint = UBlueprint::GetBlueprintFromClass(TrueScopeClass))
			{
				if (ScopeBlueprint->SkeletonGeneratedClass)
				{
					return ScopeBlueprint->SkeletonGeneratedClass;
				}
			}
			return TrueScopeClass;
		}
	}
	if (bUseSelf)
	{
		if (const UBlueprint* Blueprint = GetBlueprint())
		{
			UClass* Scope = bDontUseSkeletalClassForSelf ? Blueprint->GeneratedClass.Get() : Blueprint->SkeletonGeneratedClass.Get();
			// Before the first compile the parent class stands in for the Blueprint's class.
			return Scope ? Scope : GetBlueprintClassFromNode();
		}
	}
	return nullptr;
}

bool UK2Node_CreateDelegate::IsValid(FString* OutMsg, bool bDontUseSkeletalClassForSelf) const
{
	auto Fail = [OutMsg](const FText& Message)
	{
		if (OutMsg)
		{
			*OutMsg = Message.ToString();
		}
		return false;
	};
	const FName FunctionName = GetFunctionName();
	if (FunctionName.IsNone())
	{
		return Fail(LOCTEXT("No_function_name", "No function/event specified."));
	}
	const UEdGraphPin* DelegatePin = GetDelegateOutPin();
	if (!DelegatePin)
	{
		return Fail(LOCTEXT("No_delegate_out_pin", "Malformed node - there's no delegate output pin."));
	}
	const UFunction* Signature = GetDelegateSignature();
	if (!Signature)
	{
		return Fail(LOCTEXT("Signature_not_found", "Unable to determine expected signature - is the delegate pin connected?"));
	}
	for (int32 Index = 1; Index < DelegatePin->LinkedTo.Num(); ++Index)
	{
		const UEdGraphPin* OtherPin = DelegatePin->LinkedTo[Index];
		const UFunction* OtherSignature = OtherPin ? FMemberReference::ResolveSimpleMemberReference<UFunction>(OtherPin->PinType.PinSubCategoryMemberReference) : nullptr;
		if (OtherPin && (!OtherSignature || !Signature->IsSignatureCompatibleWith(OtherSignature)))
		{
			if (const UK2Node_BaseMCDelegate* DelegateNode = Cast<UK2Node_BaseMCDelegate>(OtherPin->GetOwningNode()))
			{
				return Fail(FText::Format(LOCTEXT("Bad_delegate_connection_named_fmt", "A connected delegate ({0}) has an incompatible signature - has that delegate changed?"),
					FText::FromName(DelegateNode->GetPropertyName())));
			}
			return Fail(LOCTEXT("Bad_delegate_connection", "A connected delegate's signature is incompatible - has that delegate changed?"));
		}
	}
	UClass* ScopeClass = GetScopeClass(bDontUseSkeletalClassForSelf);
	if (!ScopeClass)
	{
		const UEdGraphPin* SelfPin = GetObjectInPin();
		const FString SelfPinName = SelfPin ? SelfPin->PinName.ToString() : UEdGraphSchema_K2::PN_Self.ToString();
		return Fail(FText::Format(LOCTEXT("Class_not_found_fmt", "Unable to determine context for the selected function/event: '{0}' - make sure the target '{1}' pin is properly set up."),
			FText::FromName(FunctionName), FText::FromString(SelfPinName)));
	}
	FMemberReference Reference;
	Reference.SetDirect(SelectedFunctionName, SelectedFunctionGuid, ScopeClass, false);
	const UFunction* FoundFunction = Reference.ResolveMember<UFunction>(static_cast<UClass*>(nullptr));
	if (!FoundFunction)
	{
		return Fail(FText::Format(LOCTEXT("Function_not_found_fmt", "Unable to find the selected function/event: '{0}' - has it been deleted?"), FText::FromName(FunctionName)));
	}
	if (!Signature->IsSignatureCompatibleWith(FoundFunction))
	{
		return Fail(FText::Format(LOCTEXT("Function_not_compatible_fmt", "The function/event '{0}' does not match the necessary signature - has the delegate or function/event changed?"), FText::FromName(FunctionName)));
	}
	if (!UEdGraphSchema_K2::FunctionCanBeUsedInDelegate(FoundFunction))
	{
		return Fail(LOCTEXT("Function_cannot_be_used_in_delegate", "The selected function/event is not bindable - is the function/event deprecated, pure or latent?"));
	}
	if (!FoundFunction->HasAllFunctionFlags(FUNC_BlueprintAuthorityOnly))
	{
		for (const UEdGraphPin* OtherPin : DelegatePin->LinkedTo)
		{
			const UK2Node_BaseMCDelegate* Node = OtherPin ? Cast<UK2Node_BaseMCDelegate>(OtherPin->GetOwningNode()) : nullptr;
			if (Node && Node->IsAuthorityOnly())
			{
				return Fail(FText::Format(LOCTEXT("WrongDelegateAuthorityOnlyFmt", "The selected function/event ('{0}') is not compatible with this delegate (the delegate is server-only) - try marking the function/event AuthorityOnly."), FText::FromName(FunctionName)));
			}
		}
	}
	return true;
}

void UK2Node_CreateDelegate::ValidationAfterFunctionsAreCreated(FCompilerResultsLog& MessageLog, bool bFullCompile) const
{
	FString Message;
	if (!IsValid(&Message, bFullCompile))
	{
		MessageLog.Error(*FString::Printf(TEXT("@@ %s %s"), *LOCTEXT("WrongDelegate", "Signature Error:").ToString(), *Message), this);
	}
}

void UK2Node_CreateDelegate::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	Super::ValidateNodeDuringCompilation(MessageLog);
	// The functions being bound exist once the skeleton class is built, which is when the compiler validates nodes.
	ValidationAfterFunctionsAreCreated(MessageLog, false);
}

void UK2Node_CreateDelegate::HandleAnyChangeWithoutNotifying()
{
	const UBlueprint* Blueprint = GetBlueprint();
	UClass* SelfScopeClass = Blueprint ? Blueprint->SkeletonGeneratedClass.Get() : nullptr;
	UClass* ParentClass = GetScopeClass();
	const bool bIsSelfScope = SelfScopeClass && ParentClass
		&& (SelfScopeClass->IsChildOf(ParentClass) || (SelfScopeClass->ClassGeneratedBy && SelfScopeClass->ClassGeneratedBy == ParentClass->ClassGeneratedBy));

	// Resolving follows a renamed function by its guid.
	FMemberReference FunctionReference;
	FunctionReference.SetDirect(SelectedFunctionName, SelectedFunctionGuid, ParentClass, bIsSelfScope);
	if (FunctionReference.ResolveMember<UFunction>(SelfScopeClass ? SelfScopeClass : ParentClass))
	{
		SelectedFunctionName = FunctionReference.GetMemberName();
		SelectedFunctionGuid = FunctionReference.GetMemberGuid();
		if (!SelectedFunctionGuid.IsValid())
		{
			FMemberReference::GetGuidFromClassByFieldName(ParentClass, SelectedFunctionName, false, SelectedFunctionGuid);
		}
	}
	if (!IsValid())
	{
		// The name stays as a hint of what was meant, unless the node was unplugged from its dispatcher.
		const UEdGraphPin* DelegatePin = GetDelegateOutPin();
		if (DelegatePin && DelegatePin->LinkedTo.Num() == 0)
		{
			SelectedFunctionName = NAME_None;
		}
		SelectedFunctionGuid.Invalidate();
	}
}

void UK2Node_CreateDelegate::HandleAnyChange(UEdGraph*& OutGraph, UBlueprint*& OutBlueprint)
{
	const FName OldName = GetFunctionName();
	HandleAnyChangeWithoutNotifying();
	const bool bChanged = OldName != GetFunctionName();
	OutGraph = bChanged ? GetGraph() : nullptr;
	OutBlueprint = bChanged ? GetBlueprint() : nullptr;
}

void UK2Node_CreateDelegate::HandleAnyChange(bool bForceModify)
{
	const FName OldName = GetFunctionName();
	HandleAnyChangeWithoutNotifying();
	if (bForceModify || OldName != GetFunctionName() || GetFunctionName().IsNone())
	{
		if (UEdGraph* Graph = GetGraph())
		{
			Graph->NotifyGraphChanged();
		}
	}
}

void UK2Node_CreateDelegate::PinConnectionListChanged(UEdGraphPin* Pin)
{
	Super::PinConnectionListChanged(Pin);
	HandleAnyChange();
}

void UK2Node_CreateDelegate::PinTypeChanged(UEdGraphPin* Pin)
{
	Super::PinTypeChanged(Pin);
	HandleAnyChangeWithoutNotifying();
}

void UK2Node_CreateDelegate::NodeConnectionListChanged()
{
	Super::NodeConnectionListChanged();
	HandleAnyChange();
}

void UK2Node_CreateDelegate::PostReconstructNode()
{
	Super::PostReconstructNode();
	HandleAnyChange();
}

#undef LOCTEXT_NAMESPACE
