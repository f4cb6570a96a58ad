#pragma once

// Helpers the node classes of this module share: what the engine keeps in FBlueprintNodeStatics and in the
// editor utilities that the nodes call (BlueprintGraph sits below UnrealEd here, so they live with the nodes).

#include "CoreMinimal.h"
#include "EdGraph/EdGraphPin.h"
#include "UObject/Class.h"
#include "UObject/EnumProperty.h"
#include "UObject/UnrealType.h"

class UBlueprint;
class UEdGraph;
class UEdGraphNode;
class UK2Node;

struct FBlueprintNodeStatics
{
	/**
	 * The "self" input of a call to Function: a true self pin when the function is the Blueprint's own, an interface
	 * pin for an interface function, else an object pin of the class that first declares the function.
	 */
	static UEdGraphPin* CreateSelfPin(UK2Node* Node, const UFunction* Function);
};

namespace UE::BlueprintGraph::Private
{
	/** The Blueprint a graph or node belongs to, found by walking outers. */
	UBlueprint* FindBlueprintFor(const UObject* Object);

	/** True if Class or one of its supers has the metadata key. */
	bool HasMetaDataHierarchical(const UClass* Class, FName Key);

	/** True when objects of the class can find their world by themselves (actors, components, widgets...). */
	bool ClassImplementsGetWorld(const UClass* Class);

	/** The class as the Blueprint's users name it: the generated class for a skeleton class. */
	UClass* GetAuthoritativeClass(UClass* Class);

	/**
	 * Parameters of Function whose pins are hidden on a call placed in Graph: latent info, HidePin and
	 * InternalUseParam lists, expanded enums and the world context when the Blueprint has one of its own.
	 * OutInternalPins gets the InternalUseParam ones, which cannot be connected either.
	 */
	void GetHiddenPinsForFunction(const UEdGraph* Graph, const UFunction* Function, TSet<FName>& HiddenPins, TSet<FName>* OutInternalPins = nullptr);

	/** A parameter's default from the function's metadata (its own key, then CPP_Default_<Param>). */
	bool FindFunctionParameterDefaultValue(const UFunction* Function, const FProperty* Param, FString& OutString);

	/** Gives an enum property reflected with UE_NATIVE_PROPERTY its underlying integer property. */
	template <typename TUnderlying>
	FEnumProperty* WithUnderlying(FEnumProperty* Enum)
	{
		Enum->AddCppProperty(new TUnderlying(Enum, TEXT("UnderlyingType"), RF_Public | RF_MarkAsNative | RF_Transient));
		return Enum;
	}

	/** Gives an array property reflected with UE_NATIVE_PROPERTY a struct element. */
	FArrayProperty* WithStructElements(FArrayProperty* Array, UScriptStruct* Struct);

	/** The name of the function as titles show it: DisplayName metadata, else the name made readable. */
	FText GetUserFacingFunctionName(const UFunction* Function, bool bAllowFriendlyNames);

	/** A function's tooltip without its parameter documentation. */
	FString GetDefaultTooltipForFunction(const UFunction* Function);

	/** The text the replicated flags of a function add to titles ("Replicated To Server (if owning client)"). */
	FText GetLocalizedNetString(uint32 NetFlags, bool bCalling);
}
