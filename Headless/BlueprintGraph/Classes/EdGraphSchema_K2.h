#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraph/EdGraphSchema.h"
#include "Misc/Optional.h"
#include "UObject/Class.h"
#include "UObject/ObjectMacros.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class FProperty;
class UBlueprint;
class UEnum;
class UK2Node;
class UScriptStruct;

/** Metadata keys that Blueprints read from classes, functions and properties. */
struct FBlueprintMetadata
{
public:
	// Struct/Enum/Class
	static UE_API const FName MD_AllowableBlueprintVariableType;
	static UE_API const FName MD_NotAllowableBlueprintVariableType;

	// Class
	static UE_API const FName MD_BlueprintSpawnableComponent;
	static UE_API const FName MD_IsBlueprintBase;
	static UE_API const FName MD_RestrictedToClasses;
	static UE_API const FName MD_ChildCanTick;
	static UE_API const FName MD_ChildCannotTick;
	static UE_API const FName MD_IgnoreCategoryKeywordsInSubclasses;
	static UE_API const FName MD_CustomThunkTemplates;

	// Function
	static UE_API const FName MD_Protected;
	static UE_API const FName MD_Latent;
	static UE_API const FName MD_CustomThunk;
	static UE_API const FName MD_Variadic;
	static UE_API const FName MD_UnsafeForConstructionScripts;
	static UE_API const FName MD_FunctionCategory;
	static UE_API const FName MD_DeprecatedFunction;
	static UE_API const FName MD_DeprecatedProperty;
	static UE_API const FName MD_DeprecationMessage;
	static UE_API const FName MD_CompactNodeTitle;
	static UE_API const FName MD_DisplayName;
	static UE_API const FName MD_ReturnDisplayName;
	static UE_API const FName MD_InternalUseParam;
	static UE_API const FName MD_ForceAsFunction;
	static UE_API const FName MD_IgnoreTypePromotion;

	// Property
	static UE_API const FName MD_ExposeOnSpawn;
	static UE_API const FName MD_PropertyGetFunction;
	static UE_API const FName MD_PropertySetFunction;
	static UE_API const FName MD_Private;
	static UE_API const FName MD_HideSelfPin;
	static UE_API const FName MD_DefaultToSelf;
	static UE_API const FName MD_WorldContext;
	static UE_API const FName MD_CallableWithoutWorldContext;
	static UE_API const FName MD_DevelopmentOnly;
	static UE_API const FName MD_AutoCreateRefTerm;
	static UE_API const FName MD_HideAssetPicker;
	static UE_API const FName MD_HidePinAssetPicker;
	static UE_API const FName MD_ShowWorldContextPin;
	static UE_API const FName MD_HidePin;
	static UE_API const FName MD_BlueprintInternalUseOnly;
	static UE_API const FName MD_BlueprintInternalUseOnlyHierarchical;
	static UE_API const FName MD_NeedsLatentFixup;
	static UE_API const FName MD_LatentInfo;
	static UE_API const FName MD_LatentCallbackTarget;
	static UE_API const FName MD_AllowPrivateAccess;
	static UE_API const FName MD_ExposeFunctionCategories;

	// Interface
	static UE_API const FName MD_CannotImplementInterfaceInBlueprint;
	static UE_API const FName MD_ProhibitedInterfaces;

	static UE_API const FName MD_FunctionKeywords;
	static UE_API const FName MD_ExpandEnumAsExecs;
	static UE_API const FName MD_ExpandBoolAsExecs;
	static UE_API const FName MD_CommutativeAssociativeBinaryOperator;
	static UE_API const FName MD_MaterialParameterCollectionFunction;
	static UE_API const FName MD_Tooltip;
	static UE_API const FName MD_CallInEditor;
	static UE_API const FName MD_DataTablePin;
	static UE_API const FName MD_NativeMakeFunction;
	static UE_API const FName MD_NativeBreakFunction;
	static UE_API const FName MD_NativeDisableSplitPin;
	static UE_API const FName MD_DynamicOutputType;
	static UE_API const FName MD_DynamicOutputParam;
	static UE_API const FName MD_CustomStructureParam;
	static UE_API const FName MD_ArrayParam;
	static UE_API const FName MD_ArrayDependentParam;
	static UE_API const FName MD_SetParam;
	static UE_API const FName MD_MapParam;
	static UE_API const FName MD_MapKeyParam;
	static UE_API const FName MD_MapValueParam;
	static UE_API const FName MD_Bitmask;
	static UE_API const FName MD_BitmaskEnum;
	static UE_API const FName MD_Bitflags;
	static UE_API const FName MD_UseEnumValuesAsMaskValuesInEditor;
	static UE_API const FName MD_AnimBlueprintFunction;
	static UE_API const FName MD_ShowDisplayNames;
	static UE_API const FName MD_AllowAbstractClasses;
	static UE_API const FName MD_AllowedClasses;
	static UE_API const FName MD_GetOptions;
	static UE_API const FName MD_Namespace;
	static UE_API const FName MD_ThreadSafe;
	static UE_API const FName MD_NotThreadSafe;
	static UE_API const FName MD_FieldNotify;

private:
	FBlueprintMetadata() {}
};

/** The schema of Blueprint (Kismet 2) graphs: what may connect to what and what a pin's default value means. */
class UEdGraphSchema_K2 : public UEdGraphSchema
{
	DECLARE_CLASS(UEdGraphSchema_K2, UEdGraphSchema, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UEdGraphSchema_K2();

	// PinType.PinCategory values
	static UE_API const FName PC_Exec;
	static UE_API const FName PC_Boolean;
	static UE_API const FName PC_Byte;
	static UE_API const FName PC_Class;
	static UE_API const FName PC_SoftClass;
	static UE_API const FName PC_Int;
	static UE_API const FName PC_Int64;
	static UE_API const FName PC_Float;
	static UE_API const FName PC_Double;
	static UE_API const FName PC_Real;
	static UE_API const FName PC_Name;
	static UE_API const FName PC_Delegate;
	static UE_API const FName PC_MCDelegate;
	static UE_API const FName PC_Object;
	static UE_API const FName PC_Interface;
	static UE_API const FName PC_SoftObject;
	static UE_API const FName PC_String;
	static UE_API const FName PC_Text;
	static UE_API const FName PC_Struct;
	static UE_API const FName PC_Wildcard;
	static UE_API const FName PC_Enum;
	static UE_API const FName PC_FieldPath;

	// PinType.PinSubCategory values
	static UE_API const FName PSC_Self;
	static UE_API const FName PSC_Index;
	static UE_API const FName PSC_Bitmask;

	// Pin names with a meaning of their own
	static UE_API const FName PN_Execute;
	static UE_API const FName PN_Then;
	static UE_API const FName PN_Completed;
	static UE_API const FName PN_DelegateEntry;
	static UE_API const FName PN_EntryPoint;
	static UE_API const FName PN_Self;
	static UE_API const FName PN_Else;
	static UE_API const FName PN_Loop;
	static UE_API const FName PN_After;
	static UE_API const FName PN_ReturnValue;
	static UE_API const FName PN_ObjectToCast;
	static UE_API const FName PN_Condition;
	static UE_API const FName PN_Start;
	static UE_API const FName PN_Stop;
	static UE_API const FName PN_Index;
	static UE_API const FName PN_Item;
	static UE_API const FName PN_CastSucceeded;
	static UE_API const FName PN_CastFailed;
	static UE_API const FString PN_CastedValuePrefix;

	static UE_API const FName FN_UserConstructionScript;
	static UE_API const FName FN_ExecuteUbergraphBase;

	static UE_API const FName GN_EventGraph;
	static UE_API const FName GN_AnimGraph;

	static UE_API const FText VR_DefaultCategory;

	static UE_API const int32 AG_LevelReference;

	static UE_API const FName AllObjectTypes;

	//~ Begin UEdGraphSchema interface
	UE_API virtual const FPinConnectionResponse CanCreateConnection(const UEdGraphPin* A, const UEdGraphPin* B) const override;
	UE_API virtual bool TryCreateConnection(UEdGraphPin* A, UEdGraphPin* B) const override;
	UE_API virtual bool CreateAutomaticConversionNodeAndConnections(UEdGraphPin* A, UEdGraphPin* B) const override;
	UE_API virtual bool CreatePromotedConnection(UEdGraphPin* A, UEdGraphPin* B) const override;
	UE_API virtual FString IsPinDefaultValid(const UEdGraphPin* Pin, const FString& NewDefaultValue, UObject* NewDefaultObject, const FText& InNewDefaultText) const override;
	UE_API virtual void TrySetDefaultValue(UEdGraphPin& Pin, const FString& NewDefaultValue, bool bMarkAsModified = true) const override;
	UE_API virtual void TrySetDefaultObject(UEdGraphPin& Pin, UObject* NewDefaultObject, bool bMarkAsModified = true) const override;
	UE_API virtual void TrySetDefaultText(UEdGraphPin& InPin, const FText& InNewDefaultText, bool bMarkAsModified = true) const override;
	UE_API virtual bool DoesDefaultValueMatchAutogenerated(const UEdGraphPin& InPin) const override;
	UE_API virtual void ResetPinToAutogeneratedDefaultValue(UEdGraphPin* Pin, bool bCallModifyCallbacks = true) const override;
	UE_API virtual bool ShouldHidePinDefaultValue(UEdGraphPin* Pin) const override;
	UE_API virtual FText GetPinDisplayName(const UEdGraphPin* Pin) const override;
	//~ End UEdGraphSchema interface

	UE_API virtual bool IsSelfPin(const UEdGraphPin& Pin) const;
	UE_API virtual bool IsDelegateCategory(const FName Category) const;
	UE_API virtual bool ArePinsCompatible(const UEdGraphPin* PinA, const UEdGraphPin* PinB, const UClass* CallingContext = nullptr, bool bIgnoreArray = false) const;

	/** Reads a string into the value, object and text a pin of this type would hold. OwningObject may be null. */
	UE_API virtual void GetPinDefaultValuesFromString(const FEdGraphPinType& PinType, UObject* OwningObject, const FString& NewValue, FString& UseDefaultValue, TObjectPtr<UObject>& UseDefaultObject, FText& UseDefaultText, bool bPreserveTextIdentity = true) const;

	/** Checks a default against the pin type alone. */
	UE_API virtual bool DefaultValueSimpleValidation(const FEdGraphPinType& PinType, const FName PinName, const FString& NewDefaultValue, TObjectPtr<UObject> NewDefaultObject, const FText& InText, FString* OutMsg = nullptr) const;

	/** True when the pin belongs to a function call whose AutoCreateRefTerm metadata names it. */
	static UE_API bool IsAutoCreateRefTerm(const UEdGraphPin* Pin);

	static bool IsExecPin(const UEdGraphPin& Pin)
	{
		return Pin.PinType.PinCategory == PC_Exec;
	}

	bool IsMetaPin(const UEdGraphPin& Pin) const
	{
		return IsExecPin(Pin) || IsSelfPin(Pin);
	}

	/** Types an index wildcard accepts: bool, int, byte (enums included) and other index wildcards. */
	bool IsIndexWildcardCompatible(const FEdGraphPinType& PinType) const
	{
		return !PinType.IsContainer()
			&& (PinType.PinCategory == PC_Boolean || PinType.PinCategory == PC_Int || PinType.PinCategory == PC_Byte
				|| (PinType.PinCategory == PC_Wildcard && PinType.PinSubCategory == PSC_Index));
	}

	UE_API UEdGraphPin* FindExecutionPin(const UEdGraphNode& Node, EEdGraphPinDirection PinDirection) const;
	UE_API UEdGraphPin* FindSelfPin(const UEdGraphNode& Node, EEdGraphPinDirection PinDirection) const;

	/** Category, subcategory and subcategory object of a property's terminal type. */
	static UE_API bool GetPropertyCategoryInfo(const FProperty* TestProperty, FName& OutCategory, FName& OutSubCategory, UObject*& OutSubCategoryObject, bool& bOutIsWeakPointer);

	/** The pin type a property is shown as. */
	UE_API bool ConvertPropertyToPinType(const FProperty* Property, FEdGraphPinType& TypeOut) const;

	/**
	 * The property a pin type is stored as (the reverse of ConvertPropertyToPinType): a new property owned by
	 * Scope, or null for types no property holds (exec, wildcard, unresolved objects).
	 */
	static UE_API FProperty* CreatePropertyForPinType(FFieldVariant Scope, FName PropertyName, const FEdGraphPinType& PinType, EPropertyFlags PropertyFlags = CPF_None);

	static UE_API bool IsWildcardProperty(const FProperty* ParamProperty);

	static UE_API bool FunctionCanBePlacedAsEvent(const UFunction* InFunction);
	static UE_API bool FunctionCanBeUsedInDelegate(const UFunction* InFunction);
	static UE_API bool CanUserKismetCallFunction(const UFunction* Function);
	static UE_API bool CanKismetOverrideFunction(const UFunction* Function);
	static UE_API bool HasFunctionAnyOutputParameter(const UFunction* Function);

	/** Adds flags to the function entry node of a function graph. */
	UE_API void AddExtraFunctionFlags(const UEdGraph* CurrentGraph, int32 ExtraFlags) const;
	/** Marks the function entry node of a graph as editable in the function editor or not. */
	UE_API void MarkFunctionEntryAsEditable(const UEdGraph* CurrentGraph, bool bNewEditable) const;

	static UE_API FText TypeToText(const FProperty* const Property);
	static UE_API FText TerminalTypeToText(const FName Category, const FName SubCategory, UObject* SubCategoryObject, bool bIsWeakPtr);
	static UE_API FText TypeToText(const FEdGraphPinType& Type);
	static UE_API FText GetCategoryText(const FName Category, const bool bForMenu = false);
	static UE_API FText GetCategoryText(FName Category, FName SubCategory, bool bForMenu = false);

	UE_API virtual const FPinConnectionResponse DetermineConnectionResponseOfCompatibleTypedPins(const UEdGraphPin* PinA, const UEdGraphPin* PinB, const UEdGraphPin* InputPin, const UEdGraphPin* OutputPin) const;
	UE_API virtual bool ArePinTypesCompatible(const FEdGraphPinType& Output, const FEdGraphPinType& Input, const UClass* CallingContext = nullptr, bool bIgnoreArray = false) const;
	UE_API virtual bool ArePinTypesEquivalent(const FEdGraphPinType& PinA, const FEdGraphPinType& PinB) const;

	UE_API virtual void SetPinAutogeneratedDefaultValue(UEdGraphPin* Pin, const FString& NewValue) const;
	UE_API virtual void SetPinAutogeneratedDefaultValueBasedOnType(UEdGraphPin* Pin) const;

	struct FSearchForAutocastFunctionResults
	{
		FName TargetFunction;
		UClass* FunctionOwner = nullptr;
	};
	/** The function the editor places between an output and an input of these types, if any. */
	[[nodiscard]] UE_API virtual TOptional<FSearchForAutocastFunctionResults> SearchForAutocastFunction(const FEdGraphPinType& OutputPinType, const FEdGraphPinType& InputPinType) const;

	struct FFindSpecializedConversionNodeResults
	{
		class UK2Node* TargetNode = nullptr;
	};
	/**
	 * A node (not a function call) that converts OutputPinType into the input's type. With bCreateNode, the
	 * result carries a template of that node: Make Array, a pure cast, Enum to Name or String, Byte to Enum,
	 * a soft reference conversion, or the read of a member that holds the call's target.
	 */
	[[nodiscard]] UE_API virtual TOptional<FFindSpecializedConversionNodeResults> FindSpecializedConversionNode(const FEdGraphPinType& OutputPinType, const UEdGraphPin& InputPin, bool bCreateNode) const;

	/** Estimated height of a node, for placing nodes below each other. */
	static UE_API float EstimateNodeHeight(UEdGraphNode* Node);

	/** Wires a conversion node between the two pins: its first fitting input from OutputPin, its first fitting output to InputPin. */
	UE_API bool AutowireConversionNode(UEdGraphPin* InputPin, UEdGraphPin* OutputPin, UEdGraphNode* ConversionNode) const;

	/** Why the last CreateAutomaticConversionNodeAndConnections call failed (empty after a success). */
	const FString& GetLastConversionFailureReason() const { return LastConversionFailureReason; }

private:
	mutable FString LastConversionFailureReason;
};

#undef UE_API
