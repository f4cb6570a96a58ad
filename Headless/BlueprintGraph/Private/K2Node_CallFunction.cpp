#include "K2Node_CallFunction.h"

#include "BlueprintNodeStatics.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Kismet2/CompilerResultsLog.h"
#include "UObject/EnumProperty.h"
#include "UObject/UnrealType.h"
#include "UObject/FieldIterator.h"
#include "UObject/Script.h"

#define LOCTEXT_NAMESPACE "K2Node"

using namespace UE::BlueprintGraph::Private;

IMPLEMENT_NATIVE_ENUM(ENodePurityOverride, TEXT("/Script/BlueprintGraph"),
	TArray<TPair<FName, int64>> Entries;
	Entries.Emplace(TEXT("ENodePurityOverride::Unset"), int64(ENodePurityOverride::Unset));
	Entries.Emplace(TEXT("ENodePurityOverride::Pure"), int64(ENodePurityOverride::Pure));
	Entries.Emplace(TEXT("ENodePurityOverride::Impure"), int64(ENodePurityOverride::Impure));
	Enum->SetEnums(Entries, UEnum::ECppForm::EnumClass, EEnumFlags::None, true);
)

IMPLEMENT_CLASS(UK2Node_CallFunction,
	UE_NATIVE_PROPERTY(FBoolProperty, bDefaultsToPureFunc, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bWantsEnumToExecExpansion, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FStructProperty, FunctionReference, CPF_None, FMemberReference::StaticStruct());
	WithUnderlying<FInt8Property>(UE_NATIVE_PROPERTY(FEnumProperty, NodePurityOverride, CPF_None, StaticEnum<ENodePurityOverride>()));
)

namespace
{
	bool WantsExecPinsForParams(const UFunction* Function)
	{
		return Function->HasMetaData(FBlueprintMetadata::MD_ExpandEnumAsExecs) || Function->HasMetaData(FBlueprintMetadata::MD_ExpandBoolAsExecs);
	}

	/** Every parameter named by ExpandEnumAsExecs and ExpandBoolAsExecs, comma-separated. */
	FString GetAllExecParams(const UFunction* Function)
	{
		FString Result = Function->GetMetaData(FBlueprintMetadata::MD_ExpandEnumAsExecs);
		const FString& Bools = Function->GetMetaData(FBlueprintMetadata::MD_ExpandBoolAsExecs);
		if (!Bools.IsEmpty())
		{
			Result = Result.IsEmpty() ? Bools : Result + TEXT(", ") + Bools;
		}
		return Result;
	}

	/** A parameter is an input unless it only hands a value back (an out or return parameter). */
	bool IsFunctionInput(const FProperty* Param)
	{
		return !Param->HasAnyPropertyFlags(CPF_ReturnParm) && (!Param->HasAnyPropertyFlags(CPF_OutParm) || Param->HasAnyPropertyFlags(CPF_ReferenceParm));
	}

	UEnum* EnumOfProperty(const FProperty* Property)
	{
		if (const FByteProperty* Byte = CastField<FByteProperty>(Property))
		{
			return Byte->Enum;
		}
		if (const FEnumProperty* Enum = CastField<FEnumProperty>(Property))
		{
			return Enum->GetEnum();
		}
		return nullptr;
	}
}

UK2Node_CallFunction::UK2Node_CallFunction()
{
}

FName UK2Node_CallFunction::GetFunctionName() const
{
	return FunctionReference.GetMemberName();
}

UFunction* UK2Node_CallFunction::GetTargetFunction() const
{
	UClass* SelfScope = GetBlueprintClassFromNode();
	// A function of another Blueprint may exist only in its skeleton class until that Blueprint compiles.
	if (UClass* ParentClass = FunctionReference.GetMemberParentClass(SelfScope))
	{
		if (const UBlueprint* OwningBlueprint = UBlueprint::GetBlueprintFromClass(ParentClass))
		{
			if (UClass* Skeleton = OwningBlueprint->SkeletonGeneratedClass)
			{
				if (UFunction* SkeletonFunction = Skeleton->FindFunctionByName(FunctionReference.GetMemberName()))
				{
					return SkeletonFunction;
				}
			}
		}
	}
	return FunctionReference.ResolveMember<UFunction>(SelfScope);
}

UEdGraphPin* UK2Node_CallFunction::GetReturnValuePin() const
{
	UEdGraphPin* Pin = FindPin(UEdGraphSchema_K2::PN_ReturnValue);
	return (Pin && Pin->Direction == EGPD_Output) ? Pin : nullptr;
}

bool UK2Node_CallFunction::IsLatentFunction() const
{
	const UFunction* Function = GetTargetFunction();
	return Function && Function->HasMetaData(FBlueprintMetadata::MD_Latent);
}

bool UK2Node_CallFunction::CanFunctionSupportMultipleTargets(const UFunction* Function)
{
	return Function && !Function->HasAnyFunctionFlags(FUNC_BlueprintPure) && !Function->HasMetaData(FBlueprintMetadata::MD_Latent)
		&& Function->GetReturnProperty() == nullptr;
}

bool UK2Node_CallFunction::AllowMultipleSelfs(bool bInputAsArray) const
{
	if (const UFunction* Function = GetTargetFunction())
	{
		return CanFunctionSupportMultipleTargets(Function);
	}
	return Super::AllowMultipleSelfs(bInputAsArray);
}

bool UK2Node_CallFunction::AreExecPinsVisible() const
{
	switch (NodePurityOverride)
	{
	case ENodePurityOverride::Pure:
		return false;
	case ENodePurityOverride::Impure:
		return true;
	default:
		return !bDefaultsToPureFunc;
	}
}

bool UK2Node_CallFunction::IsNodePure() const
{
	return !AreExecPinsVisible();
}

bool UK2Node_CallFunction::FunctionHasOutputs() const
{
	const UFunction* Function = GetTargetFunction();
	return Function && UEdGraphSchema_K2::HasFunctionAnyOutputParameter(Function);
}

bool UK2Node_CallFunction::CanToggleNodePurity() const
{
	// Only something that hands values back can be pure; a pure node without outputs would never run.
	return FunctionHasOutputs();
}

void UK2Node_CallFunction::SetNodePurityOverride(ENodePurityOverride NewOverride)
{
	if (NewOverride == ENodePurityOverride::Pure && !CanToggleNodePurity())
	{
		return;
	}
	if (NodePurityOverride != NewOverride)
	{
		Modify();
		NodePurityOverride = NewOverride;
		ReconstructNode();
	}
}

void UK2Node_CallFunction::GetExpandEnumPinNames(const UFunction* Function, TArray<FName>& EnumNamesToCheck)
{
	EnumNamesToCheck.Reset();
	if (!Function)
	{
		return;
	}
	// "A, B|C": commas separate groups, bars separate the parameters of a group.
	TArray<FString> Groups;
	GetAllExecParams(Function).ParseIntoArray(Groups, TEXT(","), false);
	for (FString& Group : Groups)
	{
		Group.TrimStartAndEndInline();
		TArray<FString> Entries;
		Group.ParseIntoArray(Entries, TEXT("|"), true);
		for (FString& Entry : Entries)
		{
			Entry.TrimStartAndEndInline();
			if (!Entry.IsEmpty())
			{
				EnumNamesToCheck.Add(FName(*Entry));
			}
		}
	}
}

void UK2Node_CallFunction::DetermineWantsEnumToExecExpansion(const UFunction* Function)
{
	bWantsEnumToExecExpansion = false;
	PendingExpansionWarning.Reset();
	if (!WantsExecPinsForParams(Function))
	{
		return;
	}
	TArray<FName> Names;
	GetExpandEnumPinNames(Function, Names);
	TArray<FName> Missing;
	for (const FName& Name : Names)
	{
		const FProperty* Param = Function->FindPropertyByName(Name);
		if (Param && (EnumOfProperty(Param) || CastField<FBoolProperty>(Param)))
		{
			bWantsEnumToExecExpansion = true;
		}
		else
		{
			Missing.Add(Name);
		}
	}
	if (bWantsEnumToExecExpansion && Missing.Num() > 0)
	{
		if (Missing.Num() == 1)
		{
			PendingExpansionWarning = FText::Format(LOCTEXT("EnumToExecExpansionFailedFmt", "Unable to find enum parameter with name '{0}' to expand for @@"), FText::FromName(Missing[0])).ToString();
		}
		else
		{
			FString List;
			for (const FName& Name : Missing)
			{
				List += List.IsEmpty() ? Name.ToString() : TEXT(", ") + Name.ToString();
			}
			PendingExpansionWarning = FString::Printf(TEXT("Unable to find enum parameters for names:\n '%s' \nto expand for @@"), *List);
		}
	}
}

void UK2Node_CallFunction::CreateExecPinsForFunctionCall(const UFunction* Function)
{
	if (IsNodePure())
	{
		return;
	}
	bool bCreateExecute = true;
	bool bCreateThen = true;

	if (bWantsEnumToExecExpansion)
	{
		TArray<FName> Names;
		GetExpandEnumPinNames(Function, Names);
		const FProperty* PreviousInput = nullptr;
		for (const FName& Name : Names)
		{
			const FProperty* Param = Function->FindPropertyByName(Name);
			UEnum* Enum = Param ? EnumOfProperty(Param) : nullptr;
			if (!Param || (!Enum && !CastField<FBoolProperty>(Param)))
			{
				continue;
			}
			const bool bInput = IsFunctionInput(Param);
			const EEdGraphPinDirection Direction = bInput ? EGPD_Input : EGPD_Output;
			if (bInput)
			{
				if (PreviousInput)
				{
					bHasCompilerMessage = true;
					ErrorType = int32(EMessageSeverity::Error);
					ErrorMsg = FString::Printf(TEXT("Parameter '%s' is listed as an ExpandEnumAsExecs input, but %s already was one. Only one is permitted."), *Name.ToString(), *PreviousInput->GetName());
					break;
				}
				PreviousInput = Param;
			}
			if (Enum)
			{
				// The last entry is the enum's _MAX, never an exec.
				for (int32 Index = 0; Index < Enum->NumEnums() - 1; ++Index)
				{
					if (Enum->HasMetaData(TEXT("Hidden"), Index) || Enum->HasMetaData(TEXT("Spacer"), Index))
					{
						continue;
					}
					const FString EntryName = Enum->GetNameStringByIndex(Index);
					UEdGraphPin* ExecPin = CreatePin(Direction, UEdGraphSchema_K2::PC_Exec, FName(*EntryName));
					// With several expanded outputs, each pin says which parameter it answers.
					if (!bInput && Names.Num() > 1)
					{
						ExecPin->PinFriendlyName = FText::AsCultureInvariant(FString::Printf(TEXT("(%s) %s"), *Param->GetDisplayNameText().ToString(), *EntryName));
					}
				}
			}
			else
			{
				// True first, as on a Branch node.
				CreatePin(Direction, UEdGraphSchema_K2::PC_Exec, FName(TEXT("True")));
				CreatePin(Direction, UEdGraphSchema_K2::PC_Exec, FName(TEXT("False")));
			}
			(bInput ? bCreateExecute : bCreateThen) = false;
		}
	}

	if (bCreateExecute)
	{
		CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_Execute);
	}
	if (bCreateThen)
	{
		UEdGraphPin* Then = CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_Then);
		if (Function->HasMetaData(FBlueprintMetadata::MD_Latent))
		{
			Then->PinFriendlyName = FText::FromName(UEdGraphSchema_K2::PN_Completed);
		}
	}
}

UEdGraphPin* UK2Node_CallFunction::CreateSelfPin(const UFunction* Function)
{
	return FBlueprintNodeStatics::CreateSelfPin(this, Function);
}

bool UK2Node_CallFunction::CreatePinsForFunctionCall(const UFunction* Function)
{
	const UEdGraphSchema_K2* K2Schema = GetDefault<UEdGraphSchema_K2>();
	UClass* FunctionOwnerClass = Function->GetOwnerClass();

	bDefaultsToPureFunc = Function->HasAnyFunctionFlags(FUNC_BlueprintPure);
	DetermineWantsEnumToExecExpansion(Function);

	CreateExecPinsForFunctionCall(Function);

	UEdGraphPin* SelfPin = CreateSelfPin(Function);
	SelfPin->PinFriendlyName = LOCTEXT("Target", "Target");

	const UBlueprint* Blueprint = GetBlueprint();
	const UClass* BlueprintSelf = Blueprint ? Blueprint->SkeletonGeneratedClass.Get() : nullptr;
	if (!BlueprintSelf && Blueprint)
	{
		BlueprintSelf = Blueprint->GeneratedClass ? Blueprint->GeneratedClass.Get() : Blueprint->ParentClass.Get();
	}
	const bool bIsFunctionCompatibleWithSelf = BlueprintSelf && FunctionOwnerClass && BlueprintSelf->IsChildOf(FunctionOwnerClass);

	if (Function->HasAllFunctionFlags(FUNC_Static))
	{
		// A static function needs no target: the class default object stands in when the call is not our own.
		if (!bIsFunctionCompatibleWithSelf && FunctionOwnerClass)
		{
			SelfPin->DefaultObject = GetAuthoritativeClass(FunctionOwnerClass)->GetDefaultObject();
		}
		SelfPin->bHidden = true;
	}
	else if (Function->GetBoolMetaData(FBlueprintMetadata::MD_HideSelfPin))
	{
		SelfPin->bHidden = true;
		SelfPin->bNotConnectable = true;
	}
	else
	{
		// A pure, non-const call on our own class implies self, so the pin is left out to keep the node compact.
		SelfPin->bHidden = bIsFunctionCompatibleWithSelf && IsNodePure() && !Function->HasAnyFunctionFlags(FUNC_Const);
	}

	TSet<FName> PinsToHide;
	TSet<FName> InternalPins;
	GetHiddenPinsForFunction(GetGraph(), Function, PinsToHide, &InternalPins);
	const bool bShowWorldContextPin = PinsToHide.Num() > 0 && Blueprint && Blueprint->ParentClass
		&& HasMetaDataHierarchical(Blueprint->ParentClass, FBlueprintMetadata::MD_ShowWorldContextPin);
	const FString& DefaultToSelfParam = Function->GetMetaData(FBlueprintMetadata::MD_DefaultToSelf);
	const FString& WorldContextParam = Function->GetMetaData(FBlueprintMetadata::MD_WorldContext);

	bool bAllPinsGood = true;
	for (TFieldIterator<FProperty> It(Function); It && It->HasAnyPropertyFlags(CPF_Parm); ++It)
	{
		FProperty* Param = *It;
		const bool bInput = IsFunctionInput(Param);
		FCreatePinParams PinParams;
		PinParams.bIsReference = bInput && Param->HasAnyPropertyFlags(CPF_ReferenceParm);
		UEdGraphPin* Pin = CreatePin(bInput ? EGPD_Input : EGPD_Output, NAME_None, Param->GetFName(), PinParams);
		const bool bPinGood = K2Schema->ConvertPropertyToPinType(Param, Pin->PinType);
		bAllPinsGood = bAllPinsGood && bPinGood;
		if (!bPinGood)
		{
			continue;
		}

		if (const FString* DisplayName = Param->FindMetaData(FBlueprintMetadata::MD_DisplayName); DisplayName && !DisplayName->IsEmpty())
		{
			Pin->PinFriendlyName = FText::AsCultureInvariant(*DisplayName);
		}
		else if (Function->GetReturnProperty() == Param && Function->HasMetaData(FBlueprintMetadata::MD_ReturnDisplayName))
		{
			Pin->PinFriendlyName = Function->GetMetaDataText(FBlueprintMetadata::MD_ReturnDisplayName);
		}

		// A const reference is read through the wire only, unless AutoCreateRefTerm makes a temporary for it.
		Pin->bDefaultValueIsIgnored = Param->HasAllPropertyFlags(CPF_ConstParm | CPF_ReferenceParm)
			&& (!Function->HasMetaData(FBlueprintMetadata::MD_AutoCreateRefTerm) || Pin->PinType.IsContainer());
		Pin->bDefaultValueIsIgnored |= Param->HasAnyPropertyFlags(CPF_RequiredParm);

		const bool bAdvanced = Param->HasAllPropertyFlags(CPF_AdvancedDisplay);
		Pin->bAdvancedView = bAdvanced;
		if (bAdvanced && AdvancedPinDisplay == ENodeAdvancedPins::NoPins)
		{
			AdvancedPinDisplay = ENodeAdvancedPins::Hidden;
		}

		FString ParamValue;
		if (FindFunctionParameterDefaultValue(Function, Param, ParamValue))
		{
			K2Schema->SetPinAutogeneratedDefaultValue(Pin, ParamValue);
		}
		else
		{
			K2Schema->SetPinAutogeneratedDefaultValueBasedOnType(Pin);
		}

		if (PinsToHide.Contains(Pin->PinName))
		{
			const FString PinNameText = Pin->PinName.ToString();
			const bool bIsSelfLike = PinNameText == DefaultToSelfParam || PinNameText == WorldContextParam;
			if (!bShowWorldContextPin || !bIsSelfLike)
			{
				Pin->bHidden = true;
				Pin->bNotConnectable = InternalPins.Contains(Pin->PinName);
			}
		}

		PostParameterPinCreated(Pin);
	}

	// The expanded parameter needs a valid value even though nobody sees it.
	if (bWantsEnumToExecExpansion)
	{
		TArray<FName> Names;
		GetExpandEnumPinNames(Function, Names);
		for (const FName& Name : Names)
		{
			UEdGraphPin* EnumPin = FindPin(Name);
			UEnum* Enum = EnumPin && EnumPin->PinType.PinCategory == UEdGraphSchema_K2::PC_Byte ? Cast<UEnum>(EnumPin->PinType.PinSubCategoryObject.Get()) : nullptr;
			if (Enum)
			{
				EnumPin->DefaultValue = Enum->GetNameStringByIndex(0);
			}
		}
	}
	return bAllPinsGood;
}

void UK2Node_CallFunction::AllocateDefaultPins()
{
	if (const UFunction* Function = GetTargetFunction())
	{
		CreatePinsForFunctionCall(Function);
	}
	UpdateCustomStructurePins();
	Super::AllocateDefaultPins();
}

namespace
{
	/** The type a container pin group should take from Pin: known when Pin is wired or was given a value. */
	bool ReadTerminalType(const UEdGraphPin* Pin, bool bValueType, FEdGraphTerminalType& OutType)
	{
		if (!Pin || (!Pin->HasAnyConnections() && Pin->DoesDefaultValueMatchAutogenerated()))
		{
			return false;
		}
		FEdGraphTerminalType Type = bValueType ? Pin->PinType.PinValueType : FEdGraphTerminalType::FromPinType(Pin->PinType);
		// A wildcard that was just wired learns its type from the other end.
		if (Type.TerminalCategory == UEdGraphSchema_K2::PC_Wildcard && Pin->LinkedTo.Num() > 0 && Pin->LinkedTo[0])
		{
			const FEdGraphPinType& Linked = Pin->LinkedTo[0]->PinType;
			Type = bValueType ? Linked.PinValueType : FEdGraphTerminalType::FromPinType(Linked);
		}
		if (Type.TerminalCategory == UEdGraphSchema_K2::PC_Wildcard || Type.TerminalCategory.IsNone())
		{
			return false;
		}
		OutType = Type;
		return true;
	}

	/** Gives Pin the terminal type (or the wildcard when none is known), keeping its container and reference. */
	void ApplyTerminalType(UEdGraphPin* Pin, bool bValueType, const FEdGraphTerminalType& Type, bool bKnown)
	{
		if (!Pin)
		{
			return;
		}
		const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
		if (bValueType)
		{
			if (bKnown)
			{
				Pin->PinType.PinValueType = Type;
			}
			else
			{
				Pin->PinType.PinValueType = FEdGraphTerminalType();
				Pin->PinType.PinValueType.TerminalCategory = UEdGraphSchema_K2::PC_Wildcard;
			}
			return;
		}
		const FEdGraphTerminalType Current = FEdGraphTerminalType::FromPinType(Pin->PinType);
		if (bKnown)
		{
			if (Current == Type)
			{
				return;
			}
			Pin->PinType.PinCategory = Type.TerminalCategory;
			Pin->PinType.PinSubCategory = Type.TerminalSubCategory;
			Pin->PinType.PinSubCategoryObject = Type.TerminalSubCategoryObject;
			Pin->PinType.bIsUObjectWrapper = Type.bTerminalIsUObjectWrapper;
		}
		else
		{
			if (Current.TerminalCategory == UEdGraphSchema_K2::PC_Wildcard)
			{
				return;
			}
			Pin->PinType.PinCategory = UEdGraphSchema_K2::PC_Wildcard;
			Pin->PinType.PinSubCategory = NAME_None;
			Pin->PinType.PinSubCategoryObject = nullptr;
			Pin->PinType.bIsUObjectWrapper = false;
		}
		// The old value belongs to the old type.
		Schema->SetPinAutogeneratedDefaultValueBasedOnType(Pin);
	}
}

void UK2Node_CallFunction::ConformContainerPins()
{
	const UFunction* Function = GetTargetFunction();
	if (!Function)
	{
		return;
	}
	// "A|B,C|D": each group shares one element type.
	TArray<FString> Groups;
	Function->GetMetaData(FBlueprintMetadata::MD_SetParam).ParseIntoArray(Groups, TEXT(","), true);
	for (const FString& Group : Groups)
	{
		TArray<FString> Names;
		Group.ParseIntoArray(Names, TEXT("|"), true);
		TArray<UEdGraphPin*> GroupPins;
		for (FString& Name : Names)
		{
			Name.TrimStartAndEndInline();
			if (UEdGraphPin* Pin = FindPin(Name))
			{
				GroupPins.Add(Pin);
			}
		}
		FEdGraphTerminalType Type;
		bool bKnown = false;
		for (const UEdGraphPin* Pin : GroupPins)
		{
			if (ReadTerminalType(Pin, false, Type))
			{
				bKnown = true;
				break;
			}
		}
		for (UEdGraphPin* Pin : GroupPins)
		{
			ApplyTerminalType(Pin, false, Type, bKnown);
		}
	}

	const FString MapName = Function->GetMetaData(FBlueprintMetadata::MD_MapParam).TrimStartAndEnd();
	const FString KeyName = Function->GetMetaData(FBlueprintMetadata::MD_MapKeyParam).TrimStartAndEnd();
	const FString ValueName = Function->GetMetaData(FBlueprintMetadata::MD_MapValueParam).TrimStartAndEnd();
	if (MapName.IsEmpty() && KeyName.IsEmpty() && ValueName.IsEmpty())
	{
		return;
	}
	// The map itself speaks first for both its key and its value type.
	UEdGraphPin* MapPin = MapName.IsEmpty() ? nullptr : FindPin(MapName);
	UEdGraphPin* KeyPin = KeyName.IsEmpty() ? nullptr : FindPin(KeyName);
	UEdGraphPin* ValuePin = ValueName.IsEmpty() ? nullptr : FindPin(ValueName);
	FEdGraphTerminalType KeyType;
	FEdGraphTerminalType ValueType;
	const bool bKeyKnown = ReadTerminalType(MapPin, false, KeyType) || ReadTerminalType(KeyPin, false, KeyType);
	const bool bValueKnown = ReadTerminalType(MapPin, true, ValueType) || ReadTerminalType(ValuePin, false, ValueType);
	ApplyTerminalType(MapPin, false, KeyType, bKeyKnown);
	ApplyTerminalType(KeyPin, false, KeyType, bKeyKnown);
	ApplyTerminalType(MapPin, true, ValueType, bValueKnown);
	ApplyTerminalType(ValuePin, false, ValueType, bValueKnown);
}

void UK2Node_CallFunction::UpdateCustomStructurePins(UEdGraphPin* SinglePin)
{
	const UFunction* Function = GetTargetFunction();
	if (!Function)
	{
		return;
	}
	TArray<FString> Names;
	Function->GetMetaData(FBlueprintMetadata::MD_CustomStructureParam).ParseIntoArray(Names, TEXT(","), true);
	for (FString& Name : Names)
	{
		Name.TrimStartAndEndInline();
		UEdGraphPin* Pin = FindPin(Name);
		if (!Pin || (SinglePin && Pin != SinglePin))
		{
			continue;
		}
		if (Pin->LinkedTo.Num() > 0)
		{
			Pin->PinType = Pin->LinkedTo[0]->PinType;
		}
		else
		{
			// Reference and constness are the declaration's; the rest waits for a wire.
			const bool bWasReference = Pin->PinType.bIsReference;
			const bool bWasConst = Pin->PinType.bIsConst;
			Pin->PinType = FEdGraphPinType();
			Pin->PinType.bIsReference = bWasReference;
			Pin->PinType.bIsConst = bWasConst;
			Pin->PinType.PinCategory = UEdGraphSchema_K2::PC_Wildcard;
		}
	}
}

UEdGraphPin* UK2Node_CallFunction::GetTypePickerPin() const
{
	const UFunction* Function = GetTargetFunction();
	const FString* PickerName = Function ? Function->FindMetaData(FBlueprintMetadata::MD_DynamicOutputType) : nullptr;
	if (!PickerName || PickerName->IsEmpty())
	{
		return nullptr;
	}
	UEdGraphPin* Pin = FindPin(**PickerName);
	const FName Category = Pin ? Pin->PinType.PinCategory : NAME_None;
	const bool bPicksAType = Category == UEdGraphSchema_K2::PC_Class || Category == UEdGraphSchema_K2::PC_SoftClass
		|| Category == UEdGraphSchema_K2::PC_Object || Category == UEdGraphSchema_K2::PC_SoftObject;
	return (Pin && Pin->Direction == EGPD_Input && bPicksAType) ? Pin : nullptr;
}

namespace
{
	/** The class a type picker pin stands for: its value, else its declared class; the common class of what is wired to it. */
	UClass* PickedClass(const UK2Node_CallFunction& Node, const UEdGraphPin& Picker)
	{
		UClass* Result = UObject::StaticClass();
		if (UClass* DefaultClass = Cast<UClass>(Picker.DefaultObject.Get()))
		{
			Result = DefaultClass;
		}
		else if (UClass* BaseClass = Cast<UClass>(Picker.PinType.PinSubCategoryObject.Get()))
		{
			Result = BaseClass;
		}
		if (Picker.LinkedTo.Num() > 0)
		{
			UClass* Common = nullptr;
			for (const UEdGraphPin* Linked : Picker.LinkedTo)
			{
				UClass* LinkClass = Cast<UClass>(Linked->PinType.PinSubCategoryObject.Get());
				if (!LinkClass && Linked->PinType.PinSubCategory == UEdGraphSchema_K2::PSC_Self)
				{
					LinkClass = Node.GetBlueprintClassFromNode();
				}
				if (!LinkClass)
				{
					continue;
				}
				if (!Common)
				{
					Common = LinkClass;
					continue;
				}
				while (Common && !LinkClass->IsChildOf(Common))
				{
					Common = Common->GetSuperClass();
				}
			}
			Result = Common;
		}
		return Result;
	}
}

void UK2Node_CallFunction::ConformDynamicOutputs()
{
	const UFunction* Function = GetTargetFunction();
	const UEdGraphPin* Picker = GetTypePickerPin();
	const UClass* BasePickerClass = Picker ? Cast<UClass>(Picker->PinType.PinSubCategoryObject.Get()) : nullptr;
	if (!Function || !Picker || !BasePickerClass)
	{
		return;
	}
	UClass* Picked = PickedClass(*this, *Picker);

	// DynamicOutputParam names the outputs to retype; without it, the return value is.
	TArray<FString> Named;
	Function->GetMetaData(FBlueprintMetadata::MD_DynamicOutputParam).ParseIntoArray(Named, TEXT(","), true);
	for (FString& Name : Named)
	{
		Name.TrimStartAndEndInline();
	}
	const UEdGraphSchema_K2* K2Schema = GetDefault<UEdGraphSchema_K2>();
	for (TFieldIterator<FProperty> It(Function); It && It->HasAnyPropertyFlags(CPF_Parm); ++It)
	{
		const FProperty* Param = *It;
		const bool bGoverned = Named.Num() == 0 ? Param->HasAnyPropertyFlags(CPF_ReturnParm) : Named.Contains(Param->GetName());
		FEdGraphPinType DeclaredType;
		if (!bGoverned || !K2Schema->ConvertPropertyToPinType(Param, DeclaredType))
		{
			continue;
		}
		// Only an object-like output whose declared class the picker's class derives from can follow it.
		const FName Category = DeclaredType.PinCategory;
		const bool bObjectLike = Category == UEdGraphSchema_K2::PC_Object || Category == UEdGraphSchema_K2::PC_Interface || Category == UEdGraphSchema_K2::PC_Class
			|| Category == UEdGraphSchema_K2::PC_SoftObject || Category == UEdGraphSchema_K2::PC_SoftClass;
		const UClass* DeclaredClass = Cast<UClass>(DeclaredType.PinSubCategoryObject.Get());
		if (!bObjectLike || !DeclaredClass || !BasePickerClass->IsChildOf(DeclaredClass))
		{
			continue;
		}
		UEdGraphPin* Output = FindPin(Param->GetFName());
		if (Output && Output->Direction == EGPD_Output)
		{
			Output->PinType.PinSubCategoryObject = Picked;
		}
	}
}

bool UK2Node_CallFunction::IsConnectionDisallowed(const UEdGraphPin* MyPin, const UEdGraphPin* OtherPin, FString& OutReason) const
{
	if (Super::IsConnectionDisallowed(MyPin, OtherPin, OutReason))
	{
		return true;
	}
	if (!MyPin || !OtherPin)
	{
		return false;
	}
	if (MyPin->bNotConnectable)
	{
		OutReason = LOCTEXT("PinConnectionDisallowed", "This parameter is for internal use only.").ToString();
		return true;
	}
	// The schema lets anything meet a wildcard; a parameter of a function still cannot hold an exec.
	if (MyPin->PinType.PinCategory == UEdGraphSchema_K2::PC_Wildcard && OtherPin->PinType.PinCategory == UEdGraphSchema_K2::PC_Exec)
	{
		OutReason = LOCTEXT("PinExecConnectionDisallowed", "Cannot create a container of Exec pins.").ToString();
		return true;
	}
	return false;
}

void UK2Node_CallFunction::PinDefaultValueChanged(UEdGraphPin* Pin)
{
	Super::PinDefaultValueChanged(Pin);
	if (Pin && Pin == GetTypePickerPin())
	{
		ConformDynamicOutputs();
	}
}

void UK2Node_CallFunction::NotifyPinConnectionListChanged(UEdGraphPin* Pin)
{
	Super::NotifyPinConnectionListChanged(Pin);
	ConformContainerPins();
	UpdateCustomStructurePins(Pin);
	if (Pin && Pin == GetTypePickerPin())
	{
		ConformDynamicOutputs();
	}
}

void UK2Node_CallFunction::PostReconstructNode()
{
	Super::PostReconstructNode();
	ConformContainerPins();
	UpdateCustomStructurePins();
	ConformDynamicOutputs();

	const UFunction* Function = GetTargetFunction();
	if (Function && Function->HasAllFunctionFlags(FUNC_Static))
	{
		if (UEdGraphPin* SelfPin = FindPin(UEdGraphSchema_K2::PN_Self))
		{
			const UBlueprint* Blueprint = GetBlueprint();
			UClass* OwnerClass = Function->GetOwnerClass();
			const bool bOwn = Blueprint && Blueprint->SkeletonGeneratedClass && Blueprint->SkeletonGeneratedClass->IsChildOf(OwnerClass);
			SelfPin->DefaultObject = (bOwn || !OwnerClass) ? nullptr : GetAuthoritativeClass(OwnerClass)->GetDefaultObject();
		}
	}
	// A node forced pure whose function lost its outputs goes back to what the function says.
	if (NodePurityOverride == ENodePurityOverride::Pure && !FunctionHasOutputs())
	{
		NodePurityOverride = ENodePurityOverride::Unset;
	}
}

void UK2Node_CallFunction::SetFromFunction(const UFunction* Function)
{
	if (Function)
	{
		bDefaultsToPureFunc = Function->HasAnyFunctionFlags(FUNC_BlueprintPure);
		DetermineWantsEnumToExecExpansion(Function);
		FunctionReference.SetFromField<UFunction>(Function, GetBlueprintClassFromNode());
	}
}

FText UK2Node_CallFunction::GetUserFacingFunctionName(const UFunction* Function, ENodeTitleType::Type NodeTitleType)
{
	return UE::BlueprintGraph::Private::GetUserFacingFunctionName(Function, NodeTitleType == ENodeTitleType::FullTitle);
}

FString UK2Node_CallFunction::GetDefaultTooltipForFunction(const UFunction* Function)
{
	return UE::BlueprintGraph::Private::GetDefaultTooltipForFunction(Function);
}

FText UK2Node_CallFunction::GetFunctionContextString() const
{
	const UEdGraphPin* SelfPin = GetDefault<UEdGraphSchema_K2>()->FindSelfPin(*this, EGPD_Input);
	if (!SelfPin || SelfPin->bHidden)
	{
		return FText::GetEmpty();
	}
	const UFunction* Function = GetTargetFunction();
	UClass* SelfClass = Function ? GetAuthoritativeClass(Function->GetOwnerClass()) : nullptr;
	if (!SelfClass)
	{
		return FText::GetEmpty();
	}
	// A Blueprint class goes by its Blueprint's name.
	FText TargetName = SelfClass->GetDisplayNameText();
	if (const UBlueprint* OwningBlueprint = UBlueprint::GetBlueprintFromClass(SelfClass))
	{
		TargetName = FText::FromString(OwningBlueprint->GetName());
	}
	FFormatNamedArguments Args;
	Args.Add(TEXT("TargetName"), TargetName);
	return FText::Format(LOCTEXT("CallFunctionOnDifferentContext", "Target is {TargetName}"), Args);
}

FText UK2Node_CallFunction::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	FText FunctionName;
	FText ContextString;
	FText RPCString;
	if (const UFunction* Function = GetTargetFunction())
	{
		FunctionName = GetUserFacingFunctionName(Function, TitleType);
		RPCString = GetLocalizedNetString(uint32(Function->FunctionFlags), true);
		ContextString = GetFunctionContextString();
	}
	else
	{
		// Friendly names are the editor's default, so a missing function still reads like one.
		FunctionName = FText::FromString(FName::NameToDisplayString(FunctionReference.GetMemberName().ToString(), false));
	}

	if (TitleType != ENodeTitleType::FullTitle)
	{
		return FunctionName;
	}
	FFormatNamedArguments Args;
	Args.Add(TEXT("FunctionName"), FunctionName);
	Args.Add(TEXT("ContextString"), ContextString);
	Args.Add(TEXT("RPCString"), RPCString);
	if (ContextString.IsEmpty() && RPCString.IsEmpty())
	{
		return FText::Format(LOCTEXT("CallFunction_FullTitle", "{FunctionName}"), Args);
	}
	if (ContextString.IsEmpty())
	{
		return FText::Format(LOCTEXT("CallFunction_FullTitle_WithRPCString", "{FunctionName}\n{RPCString}"), Args);
	}
	if (RPCString.IsEmpty())
	{
		return FText::Format(LOCTEXT("CallFunction_FullTitle_WithContextString", "{FunctionName}\n{ContextString}"), Args);
	}
	return FText::Format(LOCTEXT("CallFunction_FullTitle_WithContextRPCString", "{FunctionName}\n{ContextString}\n{RPCString}"), Args);
}

FText UK2Node_CallFunction::GetTooltipText() const
{
	const UFunction* Function = GetTargetFunction();
	if (!Function)
	{
		if (const UClass* OwnerClass = FunctionReference.GetMemberParentClass(GetBlueprintClassFromNode()))
		{
			return FText::Format(LOCTEXT("CallUnknownFunctionKnownOuter", "Call unknown function {0} - missing from {1}"),
				FText::FromName(FunctionReference.GetMemberName()), FText::FromName(OwnerClass->GetFName()));
		}
		return FText::Format(LOCTEXT("CallUnknownFunction", "Call unknown function {0}"), FText::FromName(FunctionReference.GetMemberName()));
	}

	const FText BaseTooltip = FText::FromString(GetDefaultTooltipForFunction(Function));
	FText Subtitle;
	if (Function->HasAllFunctionFlags(FUNC_BlueprintAuthorityOnly))
	{
		Subtitle = LOCTEXT("ServerFunction", "Authority Only. This function will only execute on the server.");
	}
	else if (Function->HasAllFunctionFlags(FUNC_BlueprintCosmetic))
	{
		Subtitle = LOCTEXT("ClientFunction", "Cosmetic. This event is only for cosmetic, non-gameplay actions.");
	}
	else if (Function->HasMetaData(FBlueprintMetadata::MD_Latent))
	{
		Subtitle = LOCTEXT("LatentFunction", "Latent. This node will complete at a later time. Latent nodes can only be placed in event graphs.");
	}
	if (Subtitle.IsEmpty())
	{
		return BaseTooltip;
	}
	FFormatNamedArguments Args;
	Args.Add(TEXT("DefaultTooltip"), BaseTooltip);
	Args.Add(TEXT("Subtitle"), Subtitle);
	return FText::Format(LOCTEXT("CallFunction_SubtitledTooltip", "{DefaultTooltip}\n\n{Subtitle}"), Args);
}

FText UK2Node_CallFunction::GetKeywordsForFunction(const UFunction* Function)
{
	if (!Function)
	{
		return FText::GetEmpty();
	}
	// The real name always comes first, so a one-word function is found by it even when its title differs.
	FString Keywords = Function->GetName();
	if (ShouldDrawCompact(Function))
	{
		Keywords += TEXT(" ");
		Keywords += GetCompactNodeTitle(Function);
	}
	const FString& MetadataKeywords = Function->GetMetaData(FBlueprintMetadata::MD_FunctionKeywords);
	if (!MetadataKeywords.IsEmpty())
	{
		Keywords += TEXT(" ");
		Keywords += MetadataKeywords;
	}
	return FText::FromString(Keywords);
}

FText UK2Node_CallFunction::GetKeywords() const
{
	const UFunction* Function = GetTargetFunction();
	return Function ? GetKeywordsForFunction(Function) : Super::GetKeywords();
}

FText UK2Node_CallFunction::GetDefaultCategoryForFunction(const UFunction* Function, const FText& BaseCategory)
{
	if (!Function || !Function->HasMetaData(FBlueprintMetadata::MD_FunctionCategory))
	{
		return BaseCategory;
	}
	// Each level of "A|B" is shown the way the editor shows names, "AI|Navigation" stays, "MyStuff" reads "My Stuff".
	TArray<FString> Levels;
	Function->GetMetaData(FBlueprintMetadata::MD_FunctionCategory).ParseIntoArray(Levels, TEXT("|"), true);
	FString Category;
	for (FString& Level : Levels)
	{
		Level.TrimStartAndEndInline();
		if (Level.IsEmpty())
		{
			continue;
		}
		if (!Category.IsEmpty())
		{
			Category += TEXT("|");
		}
		Category += FName::NameToDisplayString(Level, false);
	}
	if (Category.IsEmpty())
	{
		return BaseCategory;
	}
	if (BaseCategory.IsEmpty())
	{
		return FText::FromString(Category);
	}
	return FText::FromString(BaseCategory.ToString() + TEXT("|") + Category);
}

FText UK2Node_CallFunction::GetMenuCategory() const
{
	const UFunction* Function = GetTargetFunction();
	return Function ? GetDefaultCategoryForFunction(Function, FText::GetEmpty()) : FText::GetEmpty();
}

bool UK2Node_CallFunction::ShouldDrawCompact(const UFunction* Function)
{
	return Function && Function->HasMetaData(FBlueprintMetadata::MD_CompactNodeTitle);
}

bool UK2Node_CallFunction::ShouldDrawCompact() const
{
	return ShouldDrawCompact(GetTargetFunction());
}

FString UK2Node_CallFunction::GetCompactNodeTitle(const UFunction* Function)
{
	const FString& Title = Function->GetMetaData(FBlueprintMetadata::MD_CompactNodeTitle);
	if (Title.IsEmpty())
	{
		return Function->GetName();
	}
	if (Title == TEXT("*"))
	{
		return FString(TEXT("\u00D7"));
	}
	if (Title == TEXT("/"))
	{
		return FString(TEXT("\u00F7"));
	}
	if (Title == TEXT("->"))
	{
		return FString(TEXT("\u2022"));
	}
	return Title;
}

FText UK2Node_CallFunction::GetCompactNodeTitle() const
{
	if (const UFunction* Function = GetTargetFunction())
	{
		return FText::FromString(GetCompactNodeTitle(Function));
	}
	return Super::GetCompactNodeTitle();
}

bool UK2Node_CallFunction::ShouldShowNodeProperties() const
{
	// The call of a function graph of this Blueprint shows the graph's properties.
	const UBlueprint* Blueprint = GetBlueprint();
	if (!Blueprint || FunctionReference.GetMemberName().IsNone())
	{
		return false;
	}
	for (const UEdGraph* Graph : Blueprint->FunctionGraphs)
	{
		if (Graph && Graph->GetFName() == FunctionReference.GetMemberName())
		{
			return true;
		}
	}
	return false;
}

FString UK2Node_CallFunction::GetDocumentationLink() const
{
	if (const UClass* ParentClass = FunctionReference.GetMemberParentClass(GetBlueprintClassFromNode()))
	{
		return FString::Printf(TEXT("Shared/GraphNodes/Blueprint/%s%s"), ParentClass->GetPrefixCPP(), *ParentClass->GetName());
	}
	return FString(TEXT("Shared/GraphNodes/Blueprint/UK2Node_CallFunction"));
}

TSet<FName> UK2Node_CallFunction::GetRequiredParamNames(const UFunction* ForFunction)
{
	TSet<FName> Result;
	for (TFieldIterator<FProperty> It(ForFunction); It && It->HasAnyPropertyFlags(CPF_Parm); ++It)
	{
		if (It->HasAnyPropertyFlags(CPF_RequiredParm))
		{
			Result.Add(It->GetFName());
		}
	}
	return Result;
}

void UK2Node_CallFunction::ValidateRequiredPins(const UFunction* Function, FCompilerResultsLog& MessageLog) const
{
	const TSet<FName> Required = GetRequiredParamNames(Function);
	if (Required.Num() == 0)
	{
		return;
	}
	for (const UEdGraphPin* Pin : Pins)
	{
		if (Pin && Required.Contains(Pin->PinName) && Pin->LinkedTo.Num() == 0)
		{
			MessageLog.Error(*LOCTEXT("MissingRequiredPin", "Pin @@ must be linked to another node (in @@)").ToString(), Pin, this);
		}
	}
}

void UK2Node_CallFunction::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	Super::ValidateNodeDuringCompilation(MessageLog);

	const UBlueprint* Blueprint = GetBlueprint();
	const UFunction* Function = GetTargetFunction();
	if (!Function)
	{
		FString OwnerName;
		if (Blueprint)
		{
			OwnerName = Blueprint->GetName();
			if (const UClass* OwnerClass = FunctionReference.GetMemberParentClass(Blueprint->GeneratedClass))
			{
				OwnerName = OwnerClass->GetName();
			}
		}
		const FString Message = FText::Format(LOCTEXT("FunctionNotFoundFmt", "Could not find a function named \"{0}\" in '{1}'.\nMake sure '{2}' has been compiled for @@"),
			FText::FromString(FunctionReference.GetMemberName().ToString()), FText::FromString(OwnerName), FText::FromString(OwnerName)).ToString();
		MessageLog.Error(*Message, this);
		return;
	}

	if (WantsExecPinsForParams(Function) && !bWantsEnumToExecExpansion)
	{
		MessageLog.Warning(*FText::Format(LOCTEXT("EnumToExecExpansionFailedFmt", "Unable to find enum parameter with name '{0}' to expand for @@"), FText::FromString(GetAllExecParams(Function))).ToString(), this);
	}
	else if (!PendingExpansionWarning.IsEmpty())
	{
		MessageLog.Warning(*PendingExpansionWarning, this);
	}

	ValidateRequiredPins(Function, MessageLog);

	if (Function->HasMetaData(FBlueprintMetadata::MD_UnsafeForConstructionScripts))
	{
		const UEdGraph* Graph = GetGraph();
		if (Graph && Graph->GetFName() == UEdGraphSchema_K2::FN_UserConstructionScript)
		{
			MessageLog.Warning(*LOCTEXT("FunctionUnsafeDuringConstruction", "Function '@@' is unsafe to call in a construction script.").ToString(), this);
		}
	}

	// Without a world of its own, the Blueprint must hand such a function a world context object.
	const bool bInsideFunctionLibrary = Blueprint && Blueprint->BlueprintType == BPTYPE_FunctionLibrary;
	if (Blueprint && !bInsideFunctionLibrary && Function->HasMetaData(FBlueprintMetadata::MD_WorldContext)
		&& !Function->HasMetaData(FBlueprintMetadata::MD_CallableWithoutWorldContext))
	{
		UClass* ParentClass = Blueprint->ParentClass;
		const FName ContextParam(*Function->GetMetaData(FBlueprintMetadata::MD_WorldContext));
		bool bConnected = false;
		for (const UEdGraphPin* Pin : Pins)
		{
			if (Pin->PinName == ContextParam && Pin->LinkedTo.Num() > 0)
			{
				bConnected = true;
				break;
			}
		}
		if (!bConnected && ParentClass && !ClassImplementsGetWorld(ParentClass) && !HasMetaDataHierarchical(ParentClass, FBlueprintMetadata::MD_ShowWorldContextPin))
		{
			MessageLog.Warning(*LOCTEXT("FunctionUnsafeInContext", "Function '@@' is unsafe to call from blueprints of class '@@' without connecting a World Context Object.").ToString(), this, ParentClass);
		}
	}

	// Access rules apply to Blueprint functions; native ones were checked when they were declared.
	if (Blueprint && !Function->HasAnyFunctionFlags(FUNC_Native))
	{
		const UClass* FunctionClass = Function->GetOwnerClass();
		const bool bFuncBelongsToSubClass = Blueprint->SkeletonGeneratedClass && FunctionClass && Blueprint->SkeletonGeneratedClass->IsChildOf(FunctionClass);
		if (Function->HasAnyFunctionFlags(FUNC_Protected) && !bFuncBelongsToSubClass)
		{
			MessageLog.Error(*LOCTEXT("FunctionProtectedAccessed", "Function '@@' is protected and can't be accessed outside of its hierarchy.").ToString(), this);
		}
		const bool bFuncBelongsToClass = bFuncBelongsToSubClass && Blueprint->SkeletonGeneratedClass.Get() == FunctionClass;
		if (Function->HasAnyFunctionFlags(FUNC_Private) && !bFuncBelongsToClass)
		{
			MessageLog.Error(*LOCTEXT("FunctionPrivateAccessed", "Function '@@' is private and can't be accessed outside of its defined class '@@'.").ToString(), this, FunctionClass);
		}
	}

	// Outputs that follow a picked class may no longer fit what they were wired to.
	if (GetTypePickerPin())
	{
		const UEdGraphSchema* Schema = GetSchema();
		for (UEdGraphPin* Pin : Pins)
		{
			if (Pin->Direction != EGPD_Output || !Schema)
			{
				continue;
			}
			for (UEdGraphPin* Link : Pin->LinkedTo)
			{
				if (Schema->CanCreateConnection(Pin, Link).Response == CONNECT_RESPONSE_DISALLOW)
				{
					MessageLog.Error(*LOCTEXT("BadConnection", "Invalid pin connection from '@@' to '@@'. You may have changed the type after the connections were made.").ToString(), Pin, Link);
				}
			}
		}
	}

	for (const UEdGraphPin* Pin : Pins)
	{
		if (Pin && Pin->PinType.bIsWeakPointer && !Pin->PinType.IsContainer())
		{
			MessageLog.Error(*FText::Format(LOCTEXT("WeakPtrNotSupportedErrorFmt", "Weak pointers are not supported as function parameters. Pin '{0}' @@"), FText::FromString(Pin->GetName())).ToString(), this);
		}
	}
}

#undef LOCTEXT_NAMESPACE
