#include "BlueprintNodeStatics.h"

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Engine/MemberReference.h"
#include "K2Node.h"
#include "K2Node_CallFunction.h"
#include "UObject/Interface.h"
#include "UObject/Script.h"

#define LOCTEXT_NAMESPACE "K2Node"

UEdGraphPin* FBlueprintNodeStatics::CreateSelfPin(UK2Node* Node, const UFunction* Function)
{
	// An override may be called on anything of the class that first declared the function.
	const UFunction* FirstDeclared = Function;
	while (FirstDeclared->GetSuperFunction())
	{
		FirstDeclared = FirstDeclared->GetSuperFunction();
	}
	UClass* FunctionClass = UE::BlueprintGraph::Private::GetAuthoritativeClass(FirstDeclared->GetOwnerClass());

	const UBlueprint* Blueprint = Node->GetBlueprint();
	const bool bIsOwnFunction = Blueprint && FunctionClass
		&& (FunctionClass == Blueprint->GeneratedClass.Get() || FunctionClass == Blueprint->SkeletonGeneratedClass.Get());
	if (bIsOwnFunction)
	{
		return Node->CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Object, UEdGraphSchema_K2::PSC_Self, nullptr, UEdGraphSchema_K2::PN_Self);
	}
	if (FunctionClass && FunctionClass->IsChildOf(UInterface::StaticClass()))
	{
		return Node->CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Interface, FunctionClass, UEdGraphSchema_K2::PN_Self);
	}
	return Node->CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Object, FunctionClass, UEdGraphSchema_K2::PN_Self);
}

namespace UE::BlueprintGraph::Private
{
	UBlueprint* FindBlueprintFor(const UObject* Object)
	{
		for (const UObject* Outer = Object; Outer; Outer = Outer->GetOuter())
		{
			if (UBlueprint* Blueprint = Cast<UBlueprint>(const_cast<UObject*>(Outer)))
			{
				return Blueprint;
			}
		}
		return nullptr;
	}

	bool HasMetaDataHierarchical(const UClass* Class, FName Key)
	{
		for (; Class; Class = Class->GetSuperClass())
		{
			if (Class->HasMetaData(Key))
			{
				return true;
			}
		}
		return false;
	}

	bool ClassImplementsGetWorld(const UClass* Class)
	{
		// The engine asks the class default object whether it overrides GetWorld; these are the engine's classes
		// that do, and Blueprints of them inherit it.
		static const TCHAR* const WorldAwareClasses[] = {
			TEXT("Actor"), TEXT("ActorComponent"), TEXT("AnimInstance"), TEXT("UserWidget"), TEXT("Widget"),
			TEXT("GameInstance"), TEXT("WorldSubsystem"), TEXT("GameInstanceSubsystem"), TEXT("LocalPlayerSubsystem"),
			TEXT("LocalPlayer"), TEXT("Player"), TEXT("LevelScriptActor"), TEXT("AnimNotify"), TEXT("AnimNotifyState"),
		};
		for (; Class; Class = Class->GetSuperClass())
		{
			if (!Class->HasAnyClassFlags(CLASS_Native))
			{
				continue;
			}
			const FString Name = Class->GetName();
			for (const TCHAR* Candidate : WorldAwareClasses)
			{
				if (Name == Candidate)
				{
					return true;
				}
			}
		}
		return false;
	}

	UClass* GetAuthoritativeClass(UClass* Class)
	{
		return Class ? FMemberReference::GetAuthoritativeClass(Class) : nullptr;
	}

	void GetHiddenPinsForFunction(const UEdGraph* Graph, const UFunction* Function, TSet<FName>& HiddenPins, TSet<FName>* OutInternalPins)
	{
		if (!Function)
		{
			return;
		}
		auto AddList = [&HiddenPins](const FString& List, TSet<FName>* AlsoInto)
		{
			TArray<FString> Names;
			List.ParseIntoArray(Names, TEXT(","), true);
			for (FString& Name : Names)
			{
				Name.TrimStartAndEndInline();
				if (!Name.IsEmpty())
				{
					HiddenPins.Add(FName(*Name));
					if (AlsoInto)
					{
						AlsoInto->Add(FName(*Name));
					}
				}
			}
		};

		if (const FString* LatentInfo = Function->FindMetaData(FBlueprintMetadata::MD_LatentInfo))
		{
			HiddenPins.Add(FName(**LatentInfo));
		}
		if (const FString* HidePin = Function->FindMetaData(FBlueprintMetadata::MD_HidePin))
		{
			AddList(*HidePin, nullptr);
		}
		if (Function->HasMetaData(FBlueprintMetadata::MD_ExpandEnumAsExecs) || Function->HasMetaData(FBlueprintMetadata::MD_ExpandBoolAsExecs))
		{
			TArray<FName> EnumNames;
			UK2Node_CallFunction::GetExpandEnumPinNames(Function, EnumNames);
			for (const FName& Name : EnumNames)
			{
				HiddenPins.Add(Name);
			}
		}
		if (const FString* InternalUse = Function->FindMetaData(FBlueprintMetadata::MD_InternalUseParam))
		{
			AddList(*InternalUse, OutInternalPins);
		}
		if (const FString* WorldContext = Function->FindMetaData(FBlueprintMetadata::MD_WorldContext))
		{
			// With an object that knows its world, "self" provides the context and the pin is not needed.
			const UBlueprint* Blueprint = FindBlueprintFor(Graph);
			const UClass* ParentClass = Blueprint ? Blueprint->ParentClass.Get() : nullptr;
			if (!Blueprint || (ParentClass && ClassImplementsGetWorld(ParentClass) && !HasMetaDataHierarchical(ParentClass, FBlueprintMetadata::MD_ShowWorldContextPin)))
			{
				HiddenPins.Add(FName(**WorldContext));
			}
		}
	}

	bool FindFunctionParameterDefaultValue(const UFunction* Function, const FProperty* Param, FString& OutString)
	{
		if (!Function || !Param)
		{
			return false;
		}
		const FString* Value = Function->FindMetaData(Param->GetFName());
		if (!Value || Value->IsEmpty())
		{
			Value = Function->FindMetaData(FName(*FString::Printf(TEXT("CPP_Default_%s"), *Param->GetName())));
		}
		if (Value && !Value->IsEmpty())
		{
			OutString = *Value;
			return true;
		}
		return false;
	}

	FArrayProperty* WithStructElements(FArrayProperty* Array, UScriptStruct* Struct)
	{
		Array->AddCppProperty(new FStructProperty(Array, Array->GetFName(), RF_Public | RF_MarkAsNative | RF_Transient, 0, CPF_None, Struct));
		return Array;
	}

	FText GetUserFacingFunctionName(const UFunction* Function, bool bAllowFriendlyNames)
	{
		if (!Function)
		{
			return FText::GetEmpty();
		}
		// Both of the editor's paths end at the display name: the friendly one reads it from the function, the
		// other looks the DisplayName text up, which falls back to the same readable form of the name.
		(void)bAllowFriendlyNames;
		return Function->GetDisplayNameText();
	}

	FString GetDefaultTooltipForFunction(const UFunction* Function)
	{
		if (!Function)
		{
			return FString();
		}
		FString Tooltip = Function->GetToolTipText().ToString();
		// Parameter documentation belongs to the pins; the node keeps the description before it.
		static const TCHAR* const Tags[] = {TEXT("@param"), TEXT("@return"), TEXT("@see")};
		int32 Cut = INDEX_NONE;
		for (const TCHAR* Tag : Tags)
		{
			const int32 At = Tooltip.Find(Tag);
			if (At != INDEX_NONE && (Cut == INDEX_NONE || At < Cut))
			{
				Cut = At;
			}
		}
		if (Cut != INDEX_NONE)
		{
			Tooltip.LeftInline(Cut);
		}
		Tooltip.TrimStartAndEndInline();
		return Tooltip.IsEmpty() ? GetUserFacingFunctionName(Function, true).ToString() : Tooltip;
	}

	FText GetLocalizedNetString(uint32 NetFlags, bool bCalling)
	{
		if (!(NetFlags & FUNC_Net))
		{
			return FText::GetEmpty();
		}
		FText Text;
		if (NetFlags & FUNC_NetMulticast)
		{
			Text = bCalling ? LOCTEXT("CustomEvent_ReplicatedMulticast", "Replicated To All (if server)")
				: LOCTEXT("CustomEvent_ReplicatedMulticastFrom", "Replicated From Server\nExecutes On All");
		}
		else if (NetFlags & FUNC_NetServer)
		{
			Text = bCalling ? LOCTEXT("CustomEvent_ReplicatedServer", "Replicated To Server (if owning client)")
				: LOCTEXT("CustomEvent_ReplicatedServerFrom", "Replicated From Client\nExecutes On Server");
		}
		else if (NetFlags & FUNC_NetClient)
		{
			Text = bCalling ? LOCTEXT("CustomEvent_ReplicatedClient", "Replicated To Owning Client (if server)")
				: LOCTEXT("CustomEvent_ReplicatedClientFrom", "Replicated From Server\nExecutes on Owning Client");
		}
		if (NetFlags & FUNC_NetReliable)
		{
			Text = FText::Format(LOCTEXT("CustomEvent_ReplicatedReliable", "RELIABLE {0}"), Text);
		}
		return Text;
	}
}

#undef LOCTEXT_NAMESPACE
