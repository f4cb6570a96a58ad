// The event dispatcher nodes: bind, unbind, unbind all, call and assign share their target and signature handling.
#include "K2Node_AddDelegate.h"
#include "K2Node_AssignDelegate.h"
#include "K2Node_BaseMCDelegate.h"
#include "K2Node_CallDelegate.h"
#include "K2Node_ClearDelegate.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_RemoveDelegate.h"

#include "BlueprintNodeStatics.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Kismet2/CompilerResultsLog.h"
#include "UObject/UnrealType.h"
#include "UObject/FieldIterator.h"

#define LOCTEXT_NAMESPACE "K2Node"

using namespace UE::BlueprintGraph::Private;

IMPLEMENT_CLASS(UK2Node_BaseMCDelegate,
	UE_NATIVE_PROPERTY(FStructProperty, DelegateReference, CPF_None, FMemberReference::StaticStruct());
)
IMPLEMENT_CLASS(UK2Node_AddDelegate)
IMPLEMENT_CLASS(UK2Node_RemoveDelegate)
IMPLEMENT_CLASS(UK2Node_ClearDelegate)
IMPLEMENT_CLASS(UK2Node_CallDelegate)
IMPLEMENT_CLASS(UK2Node_AssignDelegate)

const FName UK2Node_BaseMCDelegate::DelegatePinName(TEXT("Delegate"));

namespace
{
	/** The "Delegate" input of bind and unbind nodes, typed with the dispatcher's signature. */
	void CreateDelegateInput(UK2Node_BaseMCDelegate& Node)
	{
		FCreatePinParams PinParams;
		PinParams.bIsReference = true;
		PinParams.bIsConst = true;
		UEdGraphPin* DelegatePin = Node.CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Delegate, UK2Node_BaseMCDelegate::DelegatePinName, PinParams);
		FMemberReference::FillSimpleMemberReference<UFunction>(Node.GetDelegateSignature(), DelegatePin->PinType.PinSubCategoryMemberReference);
		DelegatePin->PinFriendlyName = LOCTEXT("PinFriendlyDelegatetName", "Event");
	}

	FText FormatWithProperty(const FText& Format, const UK2Node_BaseMCDelegate& Node)
	{
		FFormatNamedArguments Args;
		Args.Add(TEXT("PropertyName"), Node.GetPropertyDisplayName());
		return FText::Format(Format, Args);
	}
}

UK2Node_BaseMCDelegate::UK2Node_BaseMCDelegate()
{
}

void UK2Node_BaseMCDelegate::SetFromProperty(const FProperty* Property, bool bSelfContext, UClass* OwnerClass)
{
	if (!Property)
	{
		return;
	}
	FGuid Guid;
	FMemberReference::GetGuidFromClassByFieldName(Property->GetOwnerClass(), Property->GetFName(), true, Guid);
	if (bSelfContext)
	{
		DelegateReference.SetSelfMember(Property->GetFName(), Guid);
	}
	else
	{
		DelegateReference.SetExternalMember(Property->GetFName(), GetAuthoritativeClass(OwnerClass ? OwnerClass : Property->GetOwnerClass()), Guid);
	}
}

FProperty* UK2Node_BaseMCDelegate::GetProperty() const
{
	return DelegateReference.ResolveMember<FMulticastDelegateProperty>(GetBlueprintClassFromNode());
}

FText UK2Node_BaseMCDelegate::GetPropertyDisplayName() const
{
	const FProperty* Property = GetProperty();
	return Property ? Property->GetDisplayNameText() : FText::FromName(GetPropertyName());
}

void UK2Node_BaseMCDelegate::AllocateDefaultPins()
{
	Super::AllocateDefaultPins();
	CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_Execute);
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_Then);
	UClass* OwnerClass = GetAuthoritativeClass(DelegateReference.GetMemberParentClass(GetBlueprintClassFromNode()));
	UEdGraphPin* SelfPin = CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Object, OwnerClass, UEdGraphSchema_K2::PN_Self);
	SelfPin->PinFriendlyName = LOCTEXT("BaseMCDelegateSelfPinName", "Target");
}

UFunction* UK2Node_BaseMCDelegate::GetDelegateSignature(bool bForceNotFromSkelClass) const
{
	UClass* OwnerClass = DelegateReference.GetMemberParentClass(GetBlueprintClassFromNode());
	if (bForceNotFromSkelClass)
	{
		OwnerClass = GetAuthoritativeClass(OwnerClass);
	}
	else if (const UBlueprint* DelegateBlueprint = UBlueprint::GetBlueprintFromClass(OwnerClass))
	{
		// A dispatcher added since the last compile exists only in the skeleton class.
		if (DelegateBlueprint->SkeletonGeneratedClass)
		{
			OwnerClass = DelegateBlueprint->SkeletonGeneratedClass;
		}
	}
	FMemberReference Reference;
	Reference.SetDirect(DelegateReference.GetMemberName(), DelegateReference.GetMemberGuid(), OwnerClass, false);
	const FMulticastDelegateProperty* Property = Reference.ResolveMember<FMulticastDelegateProperty>(static_cast<UClass*>(nullptr));
	return Property ? Property->SignatureFunction : nullptr;
}

UEdGraphPin* UK2Node_BaseMCDelegate::GetDelegatePin() const
{
	return FindPin(DelegatePinName);
}

bool UK2Node_BaseMCDelegate::IsAuthorityOnly() const
{
	const FProperty* Property = GetProperty();
	return Property && Property->HasAnyPropertyFlags(CPF_BlueprintAuthorityOnly);
}

FText UK2Node_BaseMCDelegate::GetMenuCategory() const
{
	return LOCTEXT("DelegatesCategory", "Event Dispatchers");
}

FString UK2Node_BaseMCDelegate::GetDocumentationLink() const
{
	const FProperty* Property = GetProperty();
	const UClass* ParentClass = Property ? Property->GetOwnerClass() : DelegateReference.GetMemberParentClass(GetBlueprintClassFromNode());
	return ParentClass ? FString(TEXT("Shared/")) + ParentClass->GetName() : FString();
}

void UK2Node_BaseMCDelegate::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	Super::ValidateNodeDuringCompilation(MessageLog);
	if (const FProperty* Property = GetProperty())
	{
		if (!Property->HasAllPropertyFlags(CPF_BlueprintAssignable))
		{
			MessageLog.Error(*LOCTEXT("BaseMCDelegateNotAssignable", "Event Dispatcher is not 'BlueprintAssignable' @@").ToString(), this);
		}
	}
}

UK2Node_AddDelegate::UK2Node_AddDelegate()
{
}

void UK2Node_AddDelegate::AllocateDefaultPins()
{
	Super::AllocateDefaultPins();
	CreateDelegateInput(*this);
}

FText UK2Node_AddDelegate::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return FormatWithProperty(LOCTEXT("AddDelegate", "Bind Event to {PropertyName}"), *this);
}

FText UK2Node_AddDelegate::GetTooltipText() const
{
	return FormatWithProperty(LOCTEXT("AddDelegate_Tooltip", "Adds the event wired to Event to those {PropertyName} calls."), *this);
}

UK2Node_RemoveDelegate::UK2Node_RemoveDelegate()
{
}

void UK2Node_RemoveDelegate::AllocateDefaultPins()
{
	Super::AllocateDefaultPins();
	CreateDelegateInput(*this);
}

FText UK2Node_RemoveDelegate::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return FormatWithProperty(LOCTEXT("RemoveDelegate", "Unbind Event from {PropertyName}"), *this);
}

FText UK2Node_RemoveDelegate::GetTooltipText() const
{
	return FormatWithProperty(LOCTEXT("RemoveDelegate_Tooltip", "Stops {PropertyName} from calling the event wired to Event."), *this);
}

UK2Node_ClearDelegate::UK2Node_ClearDelegate()
{
}

FText UK2Node_ClearDelegate::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return FormatWithProperty(LOCTEXT("ClearDelegate", "Unbind all Events from {PropertyName}"), *this);
}

FText UK2Node_ClearDelegate::GetTooltipText() const
{
	return FormatWithProperty(LOCTEXT("ClearDelegate_Tooltip", "Stops {PropertyName} from calling any event."), *this);
}

UK2Node_CallDelegate::UK2Node_CallDelegate()
{
}

bool UK2Node_CallDelegate::CreatePinsForFunctionInputs(const UFunction* Function)
{
	if (!Function)
	{
		return false;
	}
	const UEdGraphSchema_K2* K2Schema = GetDefault<UEdGraphSchema_K2>();
	bool bAllPinsGood = true;
	for (TFieldIterator<FProperty> It(Function); It && It->HasAnyPropertyFlags(CPF_Parm); ++It)
	{
		const FProperty* Param = *It;
		if (Param->HasAnyPropertyFlags(CPF_OutParm) && !Param->HasAnyPropertyFlags(CPF_ReferenceParm))
		{
			continue;
		}
		UEdGraphPin* Pin = CreatePin(EGPD_Input, NAME_None, Param->GetFName());
		bAllPinsGood = K2Schema->ConvertPropertyToPinType(Param, Pin->PinType) && bAllPinsGood;
	}
	return bAllPinsGood;
}

void UK2Node_CallDelegate::AllocateDefaultPins()
{
	Super::AllocateDefaultPins();
	CreatePinsForFunctionInputs(GetDelegateSignature());
}

FText UK2Node_CallDelegate::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return FormatWithProperty(LOCTEXT("CallDelegate", "Call {PropertyName}"), *this);
}

FText UK2Node_CallDelegate::GetTooltipText() const
{
	return FormatWithProperty(LOCTEXT("CallDelegate_Tooltip", "Calls every event bound to {PropertyName}."), *this);
}

void UK2Node_CallDelegate::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	// Calling needs BlueprintCallable, not BlueprintAssignable, so the base check is skipped.
	UK2Node::ValidateNodeDuringCompilation(MessageLog);
	if (const FProperty* Property = GetProperty())
	{
		if (!Property->HasAllPropertyFlags(CPF_BlueprintCallable))
		{
			MessageLog.Error(*LOCTEXT("BaseMCDelegateNotCallable", "Event Dispatcher is not 'BlueprintCallable' @@").ToString(), this);
		}
	}
}

UK2Node_AssignDelegate::UK2Node_AssignDelegate()
{
}

FText UK2Node_AssignDelegate::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	// Placed, it is an ordinary bind node; lists name it after what it does in one step.
	if (TitleType == ENodeTitleType::ListView || TitleType == ENodeTitleType::MenuTitle)
	{
		const FProperty* Property = GetProperty();
		if (!Property)
		{
			return LOCTEXT("InvalidPropertyTitle", "Assign <invalid delegate>");
		}
		return FText::Format(LOCTEXT("AssignDelegateTitle", "Assign {0}"), Property->GetDisplayNameText());
	}
	return Super::GetNodeTitle(TitleType);
}

FText UK2Node_AssignDelegate::GetMenuCategory() const
{
	const FProperty* Property = GetProperty();
	if (Property && Property->HasMetaData(TEXT("Category")))
	{
		return FText::FromString(Property->GetMetaData(TEXT("Category")));
	}
	return Super::GetMenuCategory();
}

void UK2Node_AssignDelegate::PostPlacedNewNode()
{
	Super::PostPlacedNewNode();
	UEdGraphPin* InDelegatePin = GetDelegatePin();
	const FMulticastDelegateProperty* Property = CastField<FMulticastDelegateProperty>(GetProperty());
	if (!InDelegatePin || InDelegatePin->LinkedTo.Num() > 0 || !Property || !Property->SignatureFunction)
	{
		return;
	}
	// "<Dispatcher>_Event", numbered when the name is taken by a member or an event of the Blueprint.
	const FString BaseName = FString::Printf(TEXT("%s_Event"), *Property->GetName());
	auto IsTaken = [this](const FName Name)
	{
		const UBlueprint* Blueprint = GetBlueprint();
		const UClass* BlueprintClass = GetBlueprintClassFromNode();
		if (BlueprintClass && (BlueprintClass->FindFunctionByName(Name) || BlueprintClass->FindPropertyByName(Name)))
		{
			return true;
		}
		if (!Blueprint)
		{
			return false;
		}
		TArray<UEdGraph*> Graphs;
		Blueprint->GetAllGraphs(Graphs);
		for (const UEdGraph* Graph : Graphs)
		{
			if (Graph->GetFName() == Name)
			{
				return true;
			}
			for (const UEdGraphNode* Node : Graph->Nodes)
			{
				const UK2Node_Event* Event = Cast<UK2Node_Event>(Node);
				if (Event && Event->GetFunctionName() == Name)
				{
					return true;
				}
			}
		}
		for (const FBPVariableDescription& Variable : Blueprint->NewVariables)
		{
			if (Variable.VarName == Name)
			{
				return true;
			}
		}
		return false;
	};
	FName EventName(*BaseName);
	for (int32 Suffix = 0; IsTaken(EventName); ++Suffix)
	{
		EventName = FName(*FString::Printf(TEXT("%s_%d"), *BaseName, Suffix));
	}
	UK2Node_CustomEvent* EventNode = UK2Node_CustomEvent::CreateFromFunction(FVector2D(NodePosX - 150.0, NodePosY + 150.0), GetGraph(),
		EventName.ToString(), Property->SignatureFunction, false);
	if (EventNode)
	{
		GetDefault<UEdGraphSchema_K2>()->TryCreateConnection(EventNode->GetDelegatePin(), InDelegatePin);
	}
}

#undef LOCTEXT_NAMESPACE
