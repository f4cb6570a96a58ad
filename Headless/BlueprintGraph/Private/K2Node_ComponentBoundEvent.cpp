#include "K2Node_ComponentBoundEvent.h"

#include "BlueprintNodeStatics.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Kismet2/CompilerResultsLog.h"
#include "UObject/UnrealType.h"

#define LOCTEXT_NAMESPACE "K2Node"

using namespace UE::BlueprintGraph::Private;

IMPLEMENT_CLASS(UK2Node_ComponentBoundEvent,
	UE_NATIVE_PROPERTY(FNameProperty, DelegatePropertyName, CPF_None);
	UE_NATIVE_PROPERTY(FClassProperty, DelegateOwnerClass, CPF_TObjectPtr, UObject::StaticClass());
	UE_NATIVE_PROPERTY(FNameProperty, ComponentPropertyName, CPF_None);
)

UK2Node_ComponentBoundEvent::UK2Node_ComponentBoundEvent()
{
}

void UK2Node_ComponentBoundEvent::InitializeComponentBoundEventParams(const FObjectProperty* InComponentProperty, const FMulticastDelegateProperty* InDelegateProperty)
{
	if (InComponentProperty)
	{
		InitializeComponentBoundEventParams(InComponentProperty->GetFName(), InDelegateProperty);
	}
}

void UK2Node_ComponentBoundEvent::InitializeComponentBoundEventParams(FName InComponentPropertyName, const FMulticastDelegateProperty* InDelegateProperty)
{
	if (InComponentPropertyName.IsNone() || !InDelegateProperty)
	{
		return;
	}
	ComponentPropertyName = InComponentPropertyName;
	DelegatePropertyName = InDelegateProperty->GetFName();
	DelegateOwnerClass = GetAuthoritativeClass(InDelegateProperty->GetOwnerClass());
	EventReference.SetFromField<UFunction>(InDelegateProperty->SignatureFunction, false);

	// The event's function is named after everything that makes it unique in the Blueprint.
	const UBlueprint* Blueprint = GetBlueprint();
	CustomFunctionName = FName(*FString::Printf(TEXT("BndEvt__%s_%s_%s_%s"), Blueprint ? *Blueprint->GetName() : TEXT("None"),
		*InComponentPropertyName.ToString(), *GetName(), *EventReference.GetMemberName().ToString()));
	bOverrideFunction = false;
	bInternalEvent = true;
}

FMulticastDelegateProperty* UK2Node_ComponentBoundEvent::GetTargetDelegateProperty() const
{
	const UClass* OwnerClass = DelegateOwnerClass.Get();
	return OwnerClass ? CastField<FMulticastDelegateProperty>(OwnerClass->FindPropertyByName(DelegatePropertyName)) : nullptr;
}

FObjectProperty* UK2Node_ComponentBoundEvent::GetComponentProperty() const
{
	const UClass* BlueprintClass = GetBlueprintClassFromNode();
	return BlueprintClass ? CastField<FObjectProperty>(BlueprintClass->FindPropertyByName(ComponentPropertyName)) : nullptr;
}

FText UK2Node_ComponentBoundEvent::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	const FMulticastDelegateProperty* Delegate = GetTargetDelegateProperty();
	FFormatNamedArguments Args;
	Args.Add(TEXT("DelegatePropertyName"), Delegate ? Delegate->GetDisplayNameText() : FText::FromName(DelegatePropertyName));
	Args.Add(TEXT("ComponentPropertyName"), FText::FromName(ComponentPropertyName));
	return FText::Format(LOCTEXT("ComponentBoundEvent_Title", "{DelegatePropertyName} ({ComponentPropertyName})"), Args);
}

FText UK2Node_ComponentBoundEvent::GetTooltipText() const
{
	if (const FMulticastDelegateProperty* Delegate = GetTargetDelegateProperty())
	{
		return Delegate->GetToolTipText();
	}
	return FText::FromName(DelegatePropertyName);
}

bool UK2Node_ComponentBoundEvent::IsDelegateValid() const
{
	// The component variable must still exist (not renamed or removed), and so must the delegate.
	const UBlueprint* Blueprint = GetBlueprint();
	const UClass* BlueprintClass = Blueprint ? (Blueprint->GeneratedClass ? Blueprint->GeneratedClass.Get() : GetBlueprintClassFromNode()) : nullptr;
	return BlueprintClass && CastField<FObjectProperty>(BlueprintClass->FindPropertyByName(ComponentPropertyName)) && GetTargetDelegateProperty();
}

void UK2Node_ComponentBoundEvent::ReconstructNode()
{
	// The signature follows the delegate, which may have changed since the node was made.
	if (const FMulticastDelegateProperty* Delegate = GetTargetDelegateProperty())
	{
		if (Delegate->SignatureFunction)
		{
			EventReference.SetFromField<UFunction>(Delegate->SignatureFunction, false);
		}
	}
	Super::ReconstructNode();
}

void UK2Node_ComponentBoundEvent::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	if (!IsDelegateValid())
	{
		MessageLog.Warning(*LOCTEXT("ComponentBoundEvent_Error", "@@ does not have a valid matching component!").ToString(), this);
	}
	Super::ValidateNodeDuringCompilation(MessageLog);
}

#undef LOCTEXT_NAMESPACE
