#include "K2Node_DynamicCast.h"

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "K2NodeHelpers.h"
#include "Kismet2/CompilerResultsLog.h"
#include "UObject/Class.h"
#include "UObject/Interface.h"
#include "UObject/UnrealType.h"

#define LOCTEXT_NAMESPACE "K2Node_DynamicCast"

using namespace UE::BlueprintGraph::Private;

IMPLEMENT_CLASS(UK2Node_DynamicCast,
	UE_NATIVE_PROPERTY(FClassProperty, TargetType, CPF_None, UObject::StaticClass());
	UE_NATIVE_PROPERTY(FByteProperty, PureState, CPF_None, (UEnum*)nullptr);
)

IMPLEMENT_CLASS(UK2Node_ClassDynamicCast)

namespace
{
	const FName CastSuccessPinName(TEXT("bSuccess"));
	const FName ClassToCastName(TEXT("Class"));

	bool IsInterfaceClass(const UClass* Class)
	{
		return Class && Class->IsChildOf(UInterface::StaticClass());
	}

	FString PinLabel(const UEdGraphPin* Pin)
	{
		return Pin->PinFriendlyName.IsEmpty() ? Pin->PinName.ToString() : Pin->PinFriendlyName.ToString();
	}
}

void UK2Node_DynamicCast::InitPureState()
{
	// The editor's default (bFavorPureCastNodes) is off: new casts branch.
	if (PureState == EPureState::UseDefault)
	{
		PureState = EPureState::Impure;
	}
}

bool UK2Node_DynamicCast::IsNodePure() const
{
	return PureState == EPureState::Pure;
}

void UK2Node_DynamicCast::CreateExecPins()
{
	InitPureState();
	if (!IsNodePure())
	{
		CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_Execute);
		CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_CastSucceeded);
		CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_CastFailed);
	}
}

void UK2Node_DynamicCast::CreateSuccessPin()
{
	UEdGraphPin* SuccessPin = CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Boolean, CastSuccessPinName);
	SuccessPin->bHidden = !IsNodePure();
}

void UK2Node_DynamicCast::AllocateDefaultPins()
{
	CreateExecPins();
	CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Wildcard, UObject::StaticClass(), UEdGraphSchema_K2::PN_ObjectToCast);
	if (UClass* Target = TargetType.Get())
	{
		const FName ResultName(*(UEdGraphSchema_K2::PN_CastedValuePrefix + GetClassDisplayName(Target).ToString()));
		CreatePin(EGPD_Output, IsInterfaceClass(Target) ? UEdGraphSchema_K2::PC_Interface : UEdGraphSchema_K2::PC_Object, Target, ResultName);
	}
	CreateSuccessPin();
	Super::AllocateDefaultPins();
}

FText UK2Node_DynamicCast::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	if (!TargetType.Get())
	{
		return LOCTEXT("BadCastNode", "Bad cast node");
	}
	FFormatNamedArguments Args;
	Args.Add(TEXT("TargetName"), FText::FromString(GetClassTitleName(TargetType.Get())));
	return FText::Format(LOCTEXT("CastTo", "Cast To {TargetName}"), Args);
}

FText UK2Node_DynamicCast::GetTooltipText() const
{
	const UClass* Target = TargetType.Get();
	if (IsInterfaceClass(Target))
	{
		return FText::Format(LOCTEXT("CastToInterfaceTooltip", "Checks whether the object implements the interface '{0}' and, if it does, gives it back as one."), FText::FromString(Target->GetName()));
	}
	if (const UBlueprint* Blueprint = UBlueprint::GetBlueprintFromClass(Target))
	{
		return FText::Format(LOCTEXT("CastToBPTooltip", "Checks whether the object is an instance of the Blueprint class '{0}' and, if it is, gives it back as one.\n\nThe Blueprint then stays loaded whenever this graph is, which has a cost."), FText::FromString(Blueprint->GetName()));
	}
	return FText::Format(LOCTEXT("CastToNativeTooltip", "Checks whether the object is an instance of the class '{0}' and, if it is, gives it back as one."), FText::FromString(Target ? Target->GetName() : FString()));
}

FText UK2Node_DynamicCast::GetMenuCategory() const
{
	return LOCTEXT("CastingCategory", "Utilities|Casting");
}

FText UK2Node_DynamicCast::GetKeywords() const
{
	return LOCTEXT("CastKeywords", "cast convert");
}

UEdGraphPin* UK2Node_DynamicCast::GetValidCastPin() const
{
	return FindPin(UEdGraphSchema_K2::PN_CastSucceeded, EGPD_Output);
}

UEdGraphPin* UK2Node_DynamicCast::GetInvalidCastPin() const
{
	return FindPin(UEdGraphSchema_K2::PN_CastFailed, EGPD_Output);
}

UEdGraphPin* UK2Node_DynamicCast::GetCastResultPin() const
{
	const UClass* Target = TargetType.Get();
	if (!Target)
	{
		return nullptr;
	}
	for (UEdGraphPin* Pin : Pins)
	{
		if (Pin->Direction == EGPD_Output && Pin->PinType.PinSubCategoryObject.Get() == Target
			&& Pin->PinName.ToString().StartsWith(UEdGraphSchema_K2::PN_CastedValuePrefix, ESearchCase::CaseSensitive))
		{
			return Pin;
		}
	}
	return nullptr;
}

UEdGraphPin* UK2Node_DynamicCast::GetCastSourcePin() const
{
	return FindPin(UEdGraphSchema_K2::PN_ObjectToCast, EGPD_Input);
}

UEdGraphPin* UK2Node_DynamicCast::GetBoolSuccessPin() const
{
	return FindPin(CastSuccessPinName, EGPD_Output);
}

void UK2Node_DynamicCast::SetPurity(bool bNewPurity)
{
	InitPureState();
	if (bNewPurity == IsNodePure())
	{
		return;
	}
	PureState = bNewPurity ? EPureState::Pure : EPureState::Impure;
	if (Pins.Num() > 0)
	{
		// Links of the exec pins are carried over first: a reconstruction that only matches names drops them.
		TArray<UEdGraphPin*> Current = Pins;
		ReconnectPureExecPins(Current);
		ReconstructNode();
	}
}

bool UK2Node_DynamicCast::ReconnectPureExecPins(TArray<UEdGraphPin*>& OldPins)
{
	if (!IsNodePure())
	{
		return false;
	}
	UEdGraphPin* const* ExecPin = OldPins.FindByPredicate([](const UEdGraphPin* Pin) { return Pin->PinName == UEdGraphSchema_K2::PN_Execute; });
	UEdGraphPin* const* ThenPin = OldPins.FindByPredicate([](const UEdGraphPin* Pin) { return Pin->PinName == UEdGraphSchema_K2::PN_Then; });
	if (!ExecPin || !ThenPin || (*ThenPin)->LinkedTo.Num() == 0)
	{
		return false;
	}
	// Whatever ran the cast now runs what the cast ran on success.
	UEdGraphPin* Next = (*ThenPin)->LinkedTo[0];
	while ((*ExecPin)->LinkedTo.Num() > 0)
	{
		UEdGraphPin* Before = (*ExecPin)->LinkedTo[0];
		Before->BreakLinkTo(*ExecPin);
		Before->MakeLinkTo(Next);
	}
	return true;
}

void UK2Node_DynamicCast::ReallocatePinsDuringReconstruction(TArray<UEdGraphPin*>& OldPins)
{
	Super::ReallocatePinsDuringReconstruction(OldPins);
	ReconnectPureExecPins(OldPins);
}

void UK2Node_DynamicCast::PostReconstructNode()
{
	Super::PostReconstructNode();
	// The source pin's type follows what is wired to it ("Interface" when an interface is).
	if (UEdGraphPin* SourcePin = GetCastSourcePin())
	{
		NotifyPinConnectionListChanged(SourcePin);
	}
}

void UK2Node_DynamicCast::NotifyPinConnectionListChanged(UEdGraphPin* Pin)
{
	Super::NotifyPinConnectionListChanged(Pin);
	if (!Pin || Pin != GetCastSourcePin())
	{
		return;
	}
	Pin->PinFriendlyName = FText::GetEmpty();
	FEdGraphPinType& InputType = Pin->PinType;
	if (Pin->LinkedTo.Num() == 0)
	{
		InputType.PinCategory = UEdGraphSchema_K2::PC_Wildcard;
		InputType.PinSubCategory = NAME_None;
		InputType.PinSubCategoryObject = nullptr;
		return;
	}
	const FEdGraphPinType& ConnectedType = Pin->LinkedTo[0]->PinType;
	if (ConnectedType.PinCategory == UEdGraphSchema_K2::PC_Interface)
	{
		Pin->PinFriendlyName = LOCTEXT("InterfaceInputName", "Interface");
		InputType.PinCategory = UEdGraphSchema_K2::PC_Interface;
		InputType.PinSubCategoryObject = ConnectedType.PinSubCategoryObject;
	}
	else if (ConnectedType.PinCategory == UEdGraphSchema_K2::PC_Object)
	{
		InputType.PinCategory = UEdGraphSchema_K2::PC_Object;
		InputType.PinSubCategoryObject = UObject::StaticClass();
	}
}

bool UK2Node_DynamicCast::IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const
{
	if (MyPin != GetCastSourcePin() || !OtherPin)
	{
		return false;
	}
	const FEdGraphPinType& OtherType = OtherPin->PinType;
	if (OtherType.IsContainer())
	{
		OutReason = LOCTEXT("CannotContainerCast", "You cannot cast containers of objects.").ToString();
		return true;
	}
	if (!TargetType.Get())
	{
		OutReason = LOCTEXT("InvalidTargetType", "This cast has an invalid target type (was the class deleted without a redirect?).").ToString();
		return true;
	}
	if (OtherType.PinCategory == UEdGraphSchema_K2::PC_Interface || OtherType.PinCategory == UEdGraphSchema_K2::PC_Object)
	{
		// Casts that cannot succeed are allowed here and reported when compiling.
		return false;
	}
	OutReason = LOCTEXT("NonObjectCast", "You can only cast objects/interfaces.").ToString();
	return true;
}

void UK2Node_DynamicCast::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	Super::ValidateNodeDuringCompilation(MessageLog);

	UClass* Target = TargetType.Get();
	if (!Target)
	{
		MessageLog.Error(*LOCTEXT("BadCastNoTargetType_Error", "Node @@ has an invalid target type, please delete and recreate it").ToString(), this);
		return;
	}
	const UEdGraphPin* SourcePin = GetCastSourcePin();
	if (!SourcePin)
	{
		return;
	}
	for (const UEdGraphPin* CastInput : SourcePin->LinkedTo)
	{
		if (!CastInput || CastInput->PinType.PinCategory != UEdGraphSchema_K2::PC_Object)
		{
			continue;
		}
		UClass* SourceClass = Cast<UClass>(CastInput->PinType.PinSubCategoryObject.Get());
		if (!SourceClass && CastInput->PinType.PinSubCategory == UEdGraphSchema_K2::PSC_Self)
		{
			if (const UK2Node* InputNode = Cast<UK2Node>(CastInput->GetOwningNode()))
			{
				SourceClass = InputNode->GetBlueprintClassFromNode();
			}
		}
		if (!SourceClass)
		{
			MessageLog.Error(*FText::Format(LOCTEXT("BadCastInputFmt", "'{0}' does not have a clear object type (invalid input into @@)."), FText::FromString(PinLabel(CastInput))).ToString(), this);
			continue;
		}
		if (SourceClass == Target)
		{
			MessageLog.Note(*FText::Format(LOCTEXT("EqualObjectCastFmt", "'{0}' is already a '{1}', you don't need @@."), FText::FromString(PinLabel(CastInput)), GetClassDisplayName(Target)).ToString(), this);
		}
		else if (SourceClass->IsChildOf(Target))
		{
			MessageLog.Note(*FText::Format(LOCTEXT("UnneededObjectCastFmt", "'{0}' is already a '{1}' (which inherits from '{2}'), so you don't need @@."),
				FText::FromString(PinLabel(CastInput)), GetClassDisplayName(SourceClass), GetClassDisplayName(Target)).ToString(), this);
		}
		else if (!Target->IsChildOf(SourceClass) && !IsInterfaceClass(Target))
		{
			MessageLog.Warning(*FText::Format(LOCTEXT("DisallowedObjectCast", "'{0}' does not inherit from '{1}' (@@ would always fail)."), GetClassDisplayName(Target), GetClassDisplayName(SourceClass)).ToString(), this);
		}
	}
}

//////////////////////////////////////////////////////////////////////////
// UK2Node_ClassDynamicCast

void UK2Node_ClassDynamicCast::AllocateDefaultPins()
{
	CreateExecPins();
	CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Class, UObject::StaticClass(), ClassToCastName);
	if (UClass* Target = TargetType.Get())
	{
		const FName ResultName(*(UEdGraphSchema_K2::PN_CastedValuePrefix + GetClassDisplayName(Target).ToString()));
		CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Class, Target, ResultName);
	}
	CreateSuccessPin();
	UK2Node::AllocateDefaultPins();
}

FText UK2Node_ClassDynamicCast::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	return FText::Format(LOCTEXT("NodeTitle", "{0} Class"), Super::GetNodeTitle(TitleType));
}

FText UK2Node_ClassDynamicCast::GetTooltipText() const
{
	const UClass* Target = TargetType.Get();
	if (IsInterfaceClass(Target))
	{
		return FText::Format(LOCTEXT("ClassCastToInterfaceTooltip", "Checks whether the class implements the interface '{0}' and, if it does, gives it back as such a class."), FText::FromString(Target->GetName()));
	}
	if (const UBlueprint* Blueprint = UBlueprint::GetBlueprintFromClass(Target))
	{
		return FText::Format(LOCTEXT("ClassCastToBPTooltip", "Checks whether the class derives from the Blueprint class '{0}' and, if it does, gives it back as such a class.\n\nThe Blueprint then stays loaded whenever this graph is, which has a cost."), FText::FromString(Blueprint->GetName()));
	}
	return FText::Format(LOCTEXT("ClassCastToNativeTooltip", "Checks whether the class derives from '{0}' and, if it does, gives it back as such a class."), FText::FromString(Target ? Target->GetName() : FString()));
}

UEdGraphPin* UK2Node_ClassDynamicCast::GetCastSourcePin() const
{
	return FindPin(ClassToCastName, EGPD_Input);
}

void UK2Node_ClassDynamicCast::NotifyPinConnectionListChanged(UEdGraphPin* Pin)
{
	// The class input keeps its type: nothing to resolve.
	UK2Node::NotifyPinConnectionListChanged(Pin);
}

bool UK2Node_ClassDynamicCast::IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const
{
	if (MyPin == GetCastSourcePin() && OtherPin && OtherPin->PinType.IsContainer())
	{
		OutReason = LOCTEXT("CannotContainerCast", "You cannot cast containers of objects.").ToString();
		return true;
	}
	return false;
}

void UK2Node_ClassDynamicCast::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	UK2Node::ValidateNodeDuringCompilation(MessageLog);
	if (!TargetType.Get())
	{
		MessageLog.Error(*LOCTEXT("BadCastNoTargetType_Error", "Node @@ has an invalid target type, please delete and recreate it").ToString(), this);
	}
}

#undef LOCTEXT_NAMESPACE
