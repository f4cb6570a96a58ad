#include "K2Node_ConstructObjectFromClass.h"
#include "K2Node_SpawnActorFromClass.h"

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "GameFramework/Actor.h"
#include "K2NodeHelpers.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Math/Transform.h"
#include "UObject/Class.h"
#include "UObject/UnrealType.h"
#include "UObject/FieldIterator.h"

#define LOCTEXT_NAMESPACE "K2Node_ConstructObjectFromClass"

using namespace UE::BlueprintGraph::Private;

IMPLEMENT_CLASS(UK2Node_ConstructObjectFromClass)
IMPLEMENT_CLASS(UK2Node_SpawnActorFromClass)

namespace
{
	const FName ClassPinName(TEXT("Class"));
	const FName WorldContextPinName(TEXT("WorldContextObject"));
	const FName OuterPinFriendlyName(TEXT("Outer"));
	const FName SpawnTransformPinName(TEXT("SpawnTransform"));
	const FName CollisionHandlingOverridePinName(TEXT("CollisionHandlingOverride"));
	const FName TransformScaleMethodPinName(TEXT("TransformScaleMethod"));
	const FName OwnerPinName(TEXT("Owner"));

	UEnum* FindEngineEnum(const TCHAR* Name)
	{
		return FindObject<UEnum>(nullptr, *FString::Printf(TEXT("/Script/Engine.%s"), Name));
	}

	/** The entry name of an enum value, as pin defaults hold it; empty when the enum is unknown. */
	FString EnumValueName(const TCHAR* EnumName, const TCHAR* EntryName)
	{
		const UEnum* Enum = FindEngineEnum(EnumName);
		return Enum && Enum->GetIndexByNameString(EntryName) != INDEX_NONE ? FString(EntryName) : FString();
	}

	/** A property a Blueprint may set while spawning: ExposeOnSpawn, visible, editable on instances, not a parameter. */
	bool IsExposedOnSpawn(const FProperty* Property)
	{
		return Property->HasMetaData(FBlueprintMetadata::MD_ExposeOnSpawn)
			&& !Property->HasAnyPropertyFlags(CPF_Parm | CPF_DisableEditOnInstance)
			&& Property->HasAllPropertyFlags(CPF_BlueprintVisible)
			&& !CastField<FMulticastDelegateProperty>(Property);
	}
}

//////////////////////////////////////////////////////////////////////////
// UK2Node_ConstructObjectFromClass

UClass* UK2Node_ConstructObjectFromClass::GetClassPinBaseClass() const
{
	return UObject::StaticClass();
}

bool UK2Node_ConstructObjectFromClass::UseWorldContext() const
{
	const UBlueprint* Blueprint = GetBlueprint();
	for (const UClass* Class = Blueprint ? Blueprint->ParentClass.Get() : nullptr; Class; Class = Class->GetSuperClass())
	{
		if (Class->HasMetaData(FBlueprintMetadata::MD_ShowWorldContextPin))
		{
			return true;
		}
	}
	return false;
}

void UK2Node_ConstructObjectFromClass::AllocateDefaultPins()
{
	CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_Execute);
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_Then);
	if (UseWorldContext())
	{
		CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Object, UObject::StaticClass(), WorldContextPinName);
	}
	CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Class, GetClassPinBaseClass(), ClassPinName);
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Object, GetClassPinBaseClass(), UEdGraphSchema_K2::PN_ReturnValue);
	if (UseOuter())
	{
		UEdGraphPin* OuterPin = CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Object, UObject::StaticClass(), UEdGraphSchema_K2::PN_Self);
		OuterPin->PinFriendlyName = FText::FromName(OuterPinFriendlyName);
	}
	Super::AllocateDefaultPins();
}

UEdGraphPin* UK2Node_ConstructObjectFromClass::GetClassPin(const TArray<UEdGraphPin*>* InPinsToSearch) const
{
	const TArray<UEdGraphPin*>& Search = InPinsToSearch ? *InPinsToSearch : Pins;
	for (UEdGraphPin* Pin : Search)
	{
		if (Pin && Pin->PinName == ClassPinName && Pin->Direction == EGPD_Input)
		{
			return Pin;
		}
	}
	return nullptr;
}

UEdGraphPin* UK2Node_ConstructObjectFromClass::GetWorldContextPin() const
{
	return FindPin(WorldContextPinName, EGPD_Input);
}

UEdGraphPin* UK2Node_ConstructObjectFromClass::GetResultPin() const
{
	return FindPin(UEdGraphSchema_K2::PN_ReturnValue, EGPD_Output);
}

UEdGraphPin* UK2Node_ConstructObjectFromClass::GetOuterPin() const
{
	return UseOuter() ? FindPin(UEdGraphSchema_K2::PN_Self, EGPD_Input) : nullptr;
}

UClass* UK2Node_ConstructObjectFromClass::GetClassToSpawn(const TArray<UEdGraphPin*>* InPinsToSearch) const
{
	const UEdGraphPin* ClassPin = GetClassPin(InPinsToSearch);
	if (!ClassPin)
	{
		return nullptr;
	}
	if (ClassPin->LinkedTo.Num() > 0)
	{
		const UEdGraphPin* Source = ClassPin->LinkedTo[0];
		return Source ? Cast<UClass>(Source->PinType.PinSubCategoryObject.Get()) : nullptr;
	}
	return Cast<UClass>(ClassPin->DefaultObject);
}

bool UK2Node_ConstructObjectFromClass::IsSpawnVarPin(UEdGraphPin* Pin) const
{
	if (Pin->ParentPin)
	{
		return IsSpawnVarPin(Pin->ParentPin);
	}
	return Pin->PinName != UEdGraphSchema_K2::PN_Execute && Pin->PinName != UEdGraphSchema_K2::PN_Then
		&& Pin->PinName != UEdGraphSchema_K2::PN_ReturnValue && Pin->PinName != ClassPinName
		&& Pin->PinName != WorldContextPinName && !(UseOuter() && Pin->PinName == UEdGraphSchema_K2::PN_Self);
}

void UK2Node_ConstructObjectFromClass::CreatePinsForClass(UClass* InClass, TArray<UEdGraphPin*>* OutClassPins)
{
	check(InClass);
	const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
	const UObject* ClassDefaults = InClass->GetDefaultObject();
	for (TFieldIterator<FProperty> It(InClass); It; ++It)
	{
		const FProperty* Property = *It;
		if (!IsExposedOnSpawn(Property) || FindPin(Property->GetFName()))
		{
			continue;
		}
		FEdGraphPinType PinType;
		if (!Schema->ConvertPropertyToPinType(Property, PinType))
		{
			continue;
		}
		UEdGraphPin* Pin = CreatePin(EGPD_Input, PinType, Property->GetFName());
		if (OutClassPins)
		{
			OutClassPins->Add(Pin);
		}
		if (Property->HasAllPropertyFlags(CPF_AdvancedDisplay))
		{
			Pin->bAdvancedView = true;
			if (AdvancedPinDisplay == ENodeAdvancedPins::NoPins)
			{
				AdvancedPinDisplay = ENodeAdvancedPins::Hidden;
			}
		}
		// The pin starts at the class's own default for the property.
		if (ClassDefaults && !PinType.IsContainer() && PinType.PinCategory != UEdGraphSchema_K2::PC_Object && PinType.PinCategory != UEdGraphSchema_K2::PC_Class)
		{
			FString Value;
			if (const FBoolProperty* BoolProperty = CastField<FBoolProperty>(Property))
			{
				Value = BoolProperty->GetPropertyValue_InContainer(ClassDefaults) ? TEXT("true") : TEXT("false");
			}
			else
			{
				Property->ExportTextItem_Direct(Value, Property->ContainerPtrToValuePtr<void>(ClassDefaults), nullptr, nullptr, PPF_None);
			}
			Schema->SetPinAutogeneratedDefaultValue(Pin, Value);
		}
	}
	if (UEdGraphPin* ResultPin = GetResultPin())
	{
		ResultPin->PinType.PinSubCategoryObject = InClass;
	}
}

void UK2Node_ConstructObjectFromClass::PostPlacedNewNode()
{
	Super::PostPlacedNewNode();
	if (UClass* SpawnClass = GetClassToSpawn())
	{
		CreatePinsForClass(SpawnClass);
	}
}

void UK2Node_ConstructObjectFromClass::ReallocatePinsDuringReconstruction(TArray<UEdGraphPin*>& OldPins)
{
	AllocateDefaultPins();
	if (UClass* SpawnClass = GetClassToSpawn(&OldPins))
	{
		CreatePinsForClass(SpawnClass);
	}
}

void UK2Node_ConstructObjectFromClass::ReconstructNode()
{
	// Whichever way the base allocates pins, the class's property inputs come back with it.
	UClass* SpawnClass = GetClassToSpawn();
	Super::ReconstructNode();
	if (SpawnClass && !GetClassToSpawn())
	{
		return;
	}
	if (UClass* NowClass = GetClassToSpawn())
	{
		bool bMissing = false;
		for (TFieldIterator<FProperty> It(NowClass); It; ++It)
		{
			bMissing |= IsExposedOnSpawn(*It) && !FindPin(It->GetFName());
		}
		if (bMissing)
		{
			OnClassPinChanged();
		}
	}
}

void UK2Node_ConstructObjectFromClass::OnClassPinChanged()
{
	// The old class's inputs go; their links move to the new class's inputs of the same name.
	TArray<UEdGraphPin*> OldClassPins;
	for (UEdGraphPin* Pin : TArray<UEdGraphPin*>(Pins))
	{
		if (Pin->ParentPin == nullptr && IsSpawnVarPin(Pin))
		{
			Pins.Remove(Pin);
			OldClassPins.Add(Pin);
		}
	}
	TArray<UEdGraphPin*> NewClassPins;
	if (UClass* SpawnClass = GetClassToSpawn())
	{
		CreatePinsForClass(SpawnClass, &NewClassPins);
	}
	else if (UEdGraphPin* ResultPin = GetResultPin())
	{
		ResultPin->PinType.PinSubCategoryObject = GetClassPinBaseClass();
	}

	const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
	if (UEdGraphPin* ResultPin = GetResultPin())
	{
		const TArray<UEdGraphPin*> Links = ResultPin->LinkedTo;
		ResultPin->BreakAllPinLinks(true);
		for (UEdGraphPin* Linked : Links)
		{
			Schema->TryCreateConnection(ResultPin, Linked);
		}
	}
	for (UEdGraphPin* OldPin : OldClassPins)
	{
		UEdGraphPin* const* NewPin = NewClassPins.FindByPredicate([OldPin](const UEdGraphPin* Candidate) { return Candidate->PinName == OldPin->PinName; });
		if (NewPin && (*NewPin)->PinType == OldPin->PinType)
		{
			(*NewPin)->MovePersistentDataFromOldPin(*OldPin);
		}
		// Pins is no longer the owner's list for this pin: detach and free it through the node.
		Pins.Add(OldPin);
		RemovePin(OldPin);
	}
	if (UBlueprint* Blueprint = GetBlueprint())
	{
		Blueprint->Status = BS_Dirty;
	}
}

void UK2Node_ConstructObjectFromClass::PinConnectionListChanged(UEdGraphPin* Pin)
{
	Super::PinConnectionListChanged(Pin);
	if (Pin && Pin->PinName == ClassPinName)
	{
		OnClassPinChanged();
	}
}

void UK2Node_ConstructObjectFromClass::PinDefaultValueChanged(UEdGraphPin* Pin)
{
	if (Pin && Pin->PinName == ClassPinName)
	{
		OnClassPinChanged();
	}
}

FText UK2Node_ConstructObjectFromClass::GetBaseNodeTitle() const
{
	return LOCTEXT("ConstructObject_BaseTitle", "Construct Object from Class");
}

FText UK2Node_ConstructObjectFromClass::GetDefaultNodeTitle() const
{
	return LOCTEXT("ConstructObject_Title_NONE", "Construct NONE");
}

FText UK2Node_ConstructObjectFromClass::GetNodeTitleFormat() const
{
	return LOCTEXT("Construct", "Construct {ClassName}");
}

FText UK2Node_ConstructObjectFromClass::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	if (TitleType == ENodeTitleType::ListView || TitleType == ENodeTitleType::MenuTitle)
	{
		return GetBaseNodeTitle();
	}
	if (UClass* SpawnClass = GetClassToSpawn())
	{
		FFormatNamedArguments Args;
		Args.Add(TEXT("ClassName"), GetClassDisplayName(SpawnClass));
		return FText::Format(GetNodeTitleFormat(), Args);
	}
	return GetDefaultNodeTitle();
}

FText UK2Node_ConstructObjectFromClass::GetTooltipText() const
{
	return NodeTooltip.IsEmpty() ? LOCTEXT("ConstructTooltip", "Makes a new object of the chosen class") : NodeTooltip;
}

FText UK2Node_ConstructObjectFromClass::GetMenuCategory() const
{
	return LOCTEXT("GameCategory", "Game");
}

FText UK2Node_ConstructObjectFromClass::GetKeywords() const
{
	return LOCTEXT("ConstructObjectKeywords", "Create New");
}

void UK2Node_ConstructObjectFromClass::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	Super::ValidateNodeDuringCompilation(MessageLog);
	const UEdGraphPin* ClassPin = GetClassPin();
	if (ClassPin && ClassPin->LinkedTo.Num() == 0 && !ClassPin->DefaultObject)
	{
		MessageLog.Error(*LOCTEXT("NoClassError", "Spawn node @@ must have a @@ specified.").ToString(), this, ClassPin);
	}
}

//////////////////////////////////////////////////////////////////////////
// UK2Node_SpawnActorFromClass

UK2Node_SpawnActorFromClass::UK2Node_SpawnActorFromClass()
{
	NodeTooltip = LOCTEXT("SpawnActorTooltip", "Spawns an actor of the chosen class at the given transform");
}

UClass* UK2Node_SpawnActorFromClass::GetClassPinBaseClass() const
{
	return AActor::StaticClass();
}

void UK2Node_SpawnActorFromClass::AllocateDefaultPins()
{
	Super::AllocateDefaultPins();

	CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Struct, TBaseStructure<FTransform>::Get(), SpawnTransformPinName);

	UEdGraphPin* CollisionPin = CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Byte, FindEngineEnum(TEXT("ESpawnActorCollisionHandlingMethod")), CollisionHandlingOverridePinName);
	CollisionPin->DefaultValue = EnumValueName(TEXT("ESpawnActorCollisionHandlingMethod"), TEXT("Undefined"));

	// Whether the transform's scale multiplies the root component's or replaces it; decided at run time until placed.
	UEdGraphPin* ScalePin = CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Byte, FindEngineEnum(TEXT("ESpawnActorScaleMethod")), TransformScaleMethodPinName);
	ScalePin->DefaultValue = EnumValueName(TEXT("ESpawnActorScaleMethod"), TEXT("SelectDefaultAtRuntime"));
	ScalePin->bAdvancedView = true;

	UEdGraphPin* OwnerPin = CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Object, AActor::StaticClass(), OwnerPinName);
	OwnerPin->bAdvancedView = true;
	if (AdvancedPinDisplay == ENodeAdvancedPins::NoPins)
	{
		AdvancedPinDisplay = ENodeAdvancedPins::Hidden;
	}
}

void UK2Node_SpawnActorFromClass::PostPlacedNewNode()
{
	// The editor gives a spawned node its pins before it is placed; a creator that allocates afterwards finds them made.
	if (Pins.Num() == 0)
	{
		AllocateDefaultPins();
	}
	Super::PostPlacedNewNode();
	// Nodes placed by the user multiply with the root component's scale.
	if (UEdGraphPin* ScalePin = GetScaleMethodPin())
	{
		ScalePin->DefaultValue = EnumValueName(TEXT("ESpawnActorScaleMethod"), TEXT("MultiplyWithRoot"));
	}
}

bool UK2Node_SpawnActorFromClass::IsSpawnVarPin(UEdGraphPin* Pin) const
{
	for (const UEdGraphPin* Parent = Pin->ParentPin; Parent; Parent = Parent->ParentPin)
	{
		if (Parent->PinName == SpawnTransformPinName)
		{
			return false;
		}
	}
	return Super::IsSpawnVarPin(Pin) && Pin->PinName != TransformScaleMethodPinName && Pin->PinName != CollisionHandlingOverridePinName
		&& Pin->PinName != SpawnTransformPinName && Pin->PinName != OwnerPinName;
}

UEdGraphPin* UK2Node_SpawnActorFromClass::GetSpawnTransformPin() const
{
	return FindPin(SpawnTransformPinName, EGPD_Input);
}

UEdGraphPin* UK2Node_SpawnActorFromClass::GetCollisionHandlingOverridePin() const
{
	return FindPin(CollisionHandlingOverridePinName, EGPD_Input);
}

UEdGraphPin* UK2Node_SpawnActorFromClass::GetScaleMethodPin() const
{
	return FindPin(TransformScaleMethodPinName, EGPD_Input);
}

UEdGraphPin* UK2Node_SpawnActorFromClass::GetOwnerPin() const
{
	return FindPin(OwnerPinName, EGPD_Input);
}

FText UK2Node_SpawnActorFromClass::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	if (TitleType == ENodeTitleType::MenuTitle)
	{
		return LOCTEXT("SpawnActor_BaseTitle", "Spawn Actor from Class");
	}
	const UEdGraphPin* ClassPin = GetClassPin();
	if (!ClassPin || (ClassPin->LinkedTo.Num() == 0 && !ClassPin->DefaultObject))
	{
		return LOCTEXT("SpawnActor_Title_NONE", "SpawnActor NONE");
	}
	if (ClassPin->LinkedTo.Num() > 0)
	{
		// The class is only known when the graph runs.
		return LOCTEXT("SpawnActor_Title_Unknown", "SpawnActor");
	}
	FFormatNamedArguments Args;
	Args.Add(TEXT("ClassName"), GetClassDisplayName(Cast<UClass>(ClassPin->DefaultObject)));
	return FText::Format(LOCTEXT("SpawnActor_Title_Class", "SpawnActor {ClassName}"), Args);
}

#undef LOCTEXT_NAMESPACE
