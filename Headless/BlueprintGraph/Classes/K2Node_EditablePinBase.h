#pragma once

#include "CoreMinimal.h"
#include "Containers/EnumAsByte.h"
#include "K2Node.h"
#include "Math/Color.h"
#include "Templates/SharedPointer.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

/** A pin the user declared on a node (a function parameter, a custom event input). */
struct FUserPinInfo
{
	FUserPinInfo()
		: DesiredPinDirection(EGPD_MAX)
	{
	}

	/** Describes an existing pin. */
	UE_API explicit FUserPinInfo(const UEdGraphPin& InPin);

	FName PinName;
	FEdGraphPinType PinType;
	/** The direction asked for; the node may force another one. */
	TEnumAsByte<EEdGraphPinDirection> DesiredPinDirection;
	FString PinDefaultValue;
};

/** Metadata the user gives a function or macro of a Blueprint; the compiler turns it into the function's metadata. */
struct FKismetUserDeclaredFunctionMetadata
{
	FText ToolTip;
	FText Category;
	FText Keywords;
	FText CompactNodeTitle;
	FLinearColor InstanceTitleColor = FLinearColor::White;
	FString DeprecationMessage;
	bool bIsDeprecated = false;
	bool bCallInEditor = false;
	bool bThreadSafe = false;
	bool bIsUnsafeDuringActorConstruction = false;
	/** Whether the graph holds latent calls: positive yes, zero no, INDEX_NONE not known yet. Never saved. */
	int8 HasLatentFunctions = INDEX_NONE;
	/** Any other metadata the user set. */
	TMap<FName, FString> MetaDataMap;

	UE_API static UScriptStruct* StaticStruct();

	UE_API void SetMetaData(FName Key, FString&& Value);
	UE_API void SetMetaData(FName Key, const FString& Value);
	/** The value for Key, or null. */
	UE_API const FString* FindMetaData(FName Key) const;
	UE_API void RemoveMetaData(FName Key);
	bool HasMetaData(FName Key) const { return FindMetaData(Key) != nullptr; }
	const TMap<FName, FString>& GetMetaDataMap() const { return MetaDataMap; }
};

/** Why renaming a user-defined pin failed. */
namespace ERenamePinResult
{
	enum Type : int
	{
		ERenamePinResult_Success,
		ERenamePinResult_NoSuchPin,
		ERenamePinResult_NameCollision
	};
}

/** Base of nodes whose pins the user declares: function entries and results, custom events, tunnels. */
class UK2Node_EditablePinBase : public UK2Node
{
	DECLARE_CLASS(UK2Node_EditablePinBase, UK2Node, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_EditablePinBase();

	/** Whether the user may change the node's pins in the function editor. */
	bool bIsEditable = false;

	/** The pins the user declared, in order. Saved with the node. */
	TArray<TSharedPtr<FUserPinInfo>> UserDefinedPins;

	virtual bool IsEditable() const { return bIsEditable; }

	// UEdGraphNode interface
	UE_API virtual void AllocateDefaultPins() override;
	// End of UEdGraphNode interface

	/** Makes the pin for a user declaration; null if the node does not take it. */
	virtual UEdGraphPin* CreatePinFromUserDefinition(const TSharedPtr<FUserPinInfo> NewPinInfo) { return nullptr; }

	/**
	 * Declares a pin and creates it. With bUseUniqueName, a name already used on the node gets a number
	 * ("Value" becomes "Value_0"...). Returns the new pin, or null if the node refuses it.
	 */
	UE_API UEdGraphPin* CreateUserDefinedPin(const FName InPinName, const FEdGraphPinType& InPinType, EEdGraphPinDirection InDesiredDirection, bool bUseUniqueName = true);

	/** Removes the declaration and its pin. */
	UE_API void RemoveUserDefinedPin(TSharedPtr<FUserPinInfo> PinToRemove);
	UE_API void RemoveUserDefinedPinByName(const FName PinName);
	UE_API bool UserDefinedPinExists(const FName PinName) const;

	/** Renames a declared pin and its pin; with bTest only says whether it would work. */
	UE_API virtual ERenamePinResult::Type RenameUserDefinedPin(const FName OldName, const FName NewName, bool bTest = false);

	/** Whether a pin of this type and direction may be declared; OutErrorMessage says why not. */
	virtual bool CanCreateUserDefinedPin(const FEdGraphPinType& InPinType, EEdGraphPinDirection InDesiredDirection, FText& OutErrorMessage) { return true; }

	/** Sets a declared pin's default value and the pin's; false if the value is not valid for the type. */
	UE_API virtual bool ModifyUserDefinedPinDefaultValue(TSharedPtr<FUserPinInfo> PinInfo, const FString& NewDefaultValue);

	/** Whether the user may add exec pins. */
	virtual bool CanModifyExecutionWires() { return false; }

	/** Whether declared inputs may be passed by reference. */
	virtual bool CanUseRef() const { return false; }

	/** A name no pin of the node uses yet, derived from InName. */
	UE_API FName CreateUniquePinName(FName InName) const;
};

#undef UE_API
