#include "EdGraphSchema_K2.h"

#include "BlueprintTypePromotion.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "Engine/Blueprint.h"
#include "K2Node.h"
#include "K2Node_CallFunction.h"
#include "K2Node_CastByteToEnum.h"
#include "K2Node_ConvertAsset.h"
#include "K2Node_DynamicCast.h"
#include "K2Node_Event.h"
#include "K2Node_FunctionEntry.h"
#include "K2Node_FunctionResult.h"
#include "K2Node_GetEnumeratorName.h"
#include "K2Node_GetEnumeratorNameAsString.h"
#include "K2Node_MakeArray.h"
#include "K2Node_PromotableOperator.h"
#include "K2Node_VariableGet.h"
#include "Math/Color.h"
#include "Math/Rotator.h"
#include "Math/Transform.h"
#include "Math/Vector.h"
#include "Misc/DefaultValueHelper.h"
#include "Misc/PackageName.h"
#include "UObject/Class.h"
#include "UObject/EnumProperty.h"
#include "UObject/FieldIterator.h"
#include "UObject/Interface.h"
#include "UObject/Package.h"
#include "UObject/TextProperty.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"
#include "UObject/UnrealType.h"

#define LOCTEXT_NAMESPACE "KismetSchema"

IMPLEMENT_CLASS(UEdGraphSchema_K2)

// Metadata keys, spelled as the engine's headers and UHT write them.
const FName FBlueprintMetadata::MD_AllowableBlueprintVariableType(TEXT("BlueprintType"));
const FName FBlueprintMetadata::MD_NotAllowableBlueprintVariableType(TEXT("NotBlueprintType"));
const FName FBlueprintMetadata::MD_BlueprintSpawnableComponent(TEXT("BlueprintSpawnableComponent"));
const FName FBlueprintMetadata::MD_IsBlueprintBase(TEXT("IsBlueprintBase"));
const FName FBlueprintMetadata::MD_RestrictedToClasses(TEXT("RestrictedToClasses"));
const FName FBlueprintMetadata::MD_ChildCanTick(TEXT("ChildCanTick"));
const FName FBlueprintMetadata::MD_ChildCannotTick(TEXT("ChildCannotTick"));
const FName FBlueprintMetadata::MD_IgnoreCategoryKeywordsInSubclasses(TEXT("IgnoreCategoryKeywordsInSubclasses"));
const FName FBlueprintMetadata::MD_CustomThunkTemplates(TEXT("CustomThunkTemplates"));
const FName FBlueprintMetadata::MD_Protected(TEXT("BlueprintProtected"));
const FName FBlueprintMetadata::MD_Latent(TEXT("Latent"));
const FName FBlueprintMetadata::MD_CustomThunk(TEXT("CustomThunk"));
const FName FBlueprintMetadata::MD_Variadic(TEXT("Variadic"));
const FName FBlueprintMetadata::MD_UnsafeForConstructionScripts(TEXT("UnsafeDuringActorConstruction"));
const FName FBlueprintMetadata::MD_FunctionCategory(TEXT("Category"));
const FName FBlueprintMetadata::MD_DeprecatedFunction(TEXT("DeprecatedFunction"));
const FName FBlueprintMetadata::MD_DeprecatedProperty(TEXT("DeprecatedProperty"));
const FName FBlueprintMetadata::MD_DeprecationMessage(TEXT("DeprecationMessage"));
const FName FBlueprintMetadata::MD_CompactNodeTitle(TEXT("CompactNodeTitle"));
const FName FBlueprintMetadata::MD_DisplayName(TEXT("DisplayName"));
const FName FBlueprintMetadata::MD_ReturnDisplayName(TEXT("ReturnDisplayName"));
const FName FBlueprintMetadata::MD_InternalUseParam(TEXT("InternalUseParam"));
const FName FBlueprintMetadata::MD_ForceAsFunction(TEXT("ForceAsFunction"));
const FName FBlueprintMetadata::MD_IgnoreTypePromotion(TEXT("IgnoreTypePromotion"));
const FName FBlueprintMetadata::MD_ExposeOnSpawn(TEXT("ExposeOnSpawn"));
const FName FBlueprintMetadata::MD_PropertyGetFunction(TEXT("BlueprintGetter"));
const FName FBlueprintMetadata::MD_PropertySetFunction(TEXT("BlueprintSetter"));
const FName FBlueprintMetadata::MD_Private(TEXT("BlueprintPrivate"));
const FName FBlueprintMetadata::MD_HideSelfPin(TEXT("HideSelfPin"));
const FName FBlueprintMetadata::MD_DefaultToSelf(TEXT("DefaultToSelf"));
const FName FBlueprintMetadata::MD_WorldContext(TEXT("WorldContext"));
const FName FBlueprintMetadata::MD_CallableWithoutWorldContext(TEXT("CallableWithoutWorldContext"));
const FName FBlueprintMetadata::MD_DevelopmentOnly(TEXT("DevelopmentOnly"));
const FName FBlueprintMetadata::MD_AutoCreateRefTerm(TEXT("AutoCreateRefTerm"));
const FName FBlueprintMetadata::MD_HideAssetPicker(TEXT("HideAssetPicker"));
const FName FBlueprintMetadata::MD_HidePinAssetPicker(TEXT("HidePinAssetPicker"));
const FName FBlueprintMetadata::MD_ShowWorldContextPin(TEXT("ShowWorldContextPin"));
const FName FBlueprintMetadata::MD_HidePin(TEXT("HidePin"));
const FName FBlueprintMetadata::MD_BlueprintInternalUseOnly(TEXT("BlueprintInternalUseOnly"));
const FName FBlueprintMetadata::MD_BlueprintInternalUseOnlyHierarchical(TEXT("BlueprintInternalUseOnlyHierarchical"));
const FName FBlueprintMetadata::MD_NeedsLatentFixup(TEXT("NeedsLatentFixup"));
const FName FBlueprintMetadata::MD_LatentInfo(TEXT("LatentInfo"));
const FName FBlueprintMetadata::MD_LatentCallbackTarget(TEXT("LatentCallbackTarget"));
const FName FBlueprintMetadata::MD_AllowPrivateAccess(TEXT("AllowPrivateAccess"));
const FName FBlueprintMetadata::MD_ExposeFunctionCategories(TEXT("ExposeFunctionCategories"));
const FName FBlueprintMetadata::MD_CannotImplementInterfaceInBlueprint(TEXT("CannotImplementInterfaceInBlueprint"));
const FName FBlueprintMetadata::MD_ProhibitedInterfaces(TEXT("ProhibitedInterfaces"));
const FName FBlueprintMetadata::MD_FunctionKeywords(TEXT("Keywords"));
const FName FBlueprintMetadata::MD_ExpandEnumAsExecs(TEXT("ExpandEnumAsExecs"));
const FName FBlueprintMetadata::MD_ExpandBoolAsExecs(TEXT("ExpandBoolAsExecs"));
const FName FBlueprintMetadata::MD_CommutativeAssociativeBinaryOperator(TEXT("CommutativeAssociativeBinaryOperator"));
const FName FBlueprintMetadata::MD_MaterialParameterCollectionFunction(TEXT("MaterialParameterCollectionFunction"));
const FName FBlueprintMetadata::MD_Tooltip(TEXT("Tooltip"));
const FName FBlueprintMetadata::MD_CallInEditor(TEXT("CallInEditor"));
const FName FBlueprintMetadata::MD_DataTablePin(TEXT("DataTablePin"));
const FName FBlueprintMetadata::MD_NativeMakeFunction(TEXT("HasNativeMake"));
const FName FBlueprintMetadata::MD_NativeBreakFunction(TEXT("HasNativeBreak"));
const FName FBlueprintMetadata::MD_NativeDisableSplitPin(TEXT("DisableSplitPin"));
const FName FBlueprintMetadata::MD_DynamicOutputType(TEXT("DeterminesOutputType"));
const FName FBlueprintMetadata::MD_DynamicOutputParam(TEXT("DynamicOutputParam"));
const FName FBlueprintMetadata::MD_CustomStructureParam(TEXT("CustomStructureParam"));
const FName FBlueprintMetadata::MD_ArrayParam(TEXT("ArrayParm"));
const FName FBlueprintMetadata::MD_ArrayDependentParam(TEXT("ArrayTypeDependentParams"));
const FName FBlueprintMetadata::MD_SetParam(TEXT("SetParam"));
const FName FBlueprintMetadata::MD_MapParam(TEXT("MapParam"));
const FName FBlueprintMetadata::MD_MapKeyParam(TEXT("MapKeyParam"));
const FName FBlueprintMetadata::MD_MapValueParam(TEXT("MapValueParam"));
const FName FBlueprintMetadata::MD_Bitmask(TEXT("Bitmask"));
const FName FBlueprintMetadata::MD_BitmaskEnum(TEXT("BitmaskEnum"));
const FName FBlueprintMetadata::MD_Bitflags(TEXT("Bitflags"));
const FName FBlueprintMetadata::MD_UseEnumValuesAsMaskValuesInEditor(TEXT("UseEnumValuesAsMaskValuesInEditor"));
const FName FBlueprintMetadata::MD_AnimBlueprintFunction(TEXT("AnimBlueprintFunction"));
const FName FBlueprintMetadata::MD_ShowDisplayNames(TEXT("ShowDisplayNames"));
const FName FBlueprintMetadata::MD_AllowAbstractClasses(TEXT("AllowAbstract"));
const FName FBlueprintMetadata::MD_AllowedClasses(TEXT("AllowedClasses"));
const FName FBlueprintMetadata::MD_GetOptions(TEXT("GetOptions"));
const FName FBlueprintMetadata::MD_Namespace(TEXT("Namespace"));
const FName FBlueprintMetadata::MD_ThreadSafe(TEXT("BlueprintThreadSafe"));
const FName FBlueprintMetadata::MD_NotThreadSafe(TEXT("NotBlueprintThreadSafe"));
const FName FBlueprintMetadata::MD_FieldNotify(TEXT("FieldNotify"));

const FName UEdGraphSchema_K2::PC_Exec(TEXT("exec"));
const FName UEdGraphSchema_K2::PC_Boolean(TEXT("bool"));
const FName UEdGraphSchema_K2::PC_Byte(TEXT("byte"));
const FName UEdGraphSchema_K2::PC_Class(TEXT("class"));
const FName UEdGraphSchema_K2::PC_SoftClass(TEXT("softclass"));
const FName UEdGraphSchema_K2::PC_Int(TEXT("int"));
const FName UEdGraphSchema_K2::PC_Int64(TEXT("int64"));
const FName UEdGraphSchema_K2::PC_Float(TEXT("float"));
const FName UEdGraphSchema_K2::PC_Double(TEXT("double"));
const FName UEdGraphSchema_K2::PC_Real(TEXT("real"));
const FName UEdGraphSchema_K2::PC_Name(TEXT("name"));
const FName UEdGraphSchema_K2::PC_Delegate(TEXT("delegate"));
const FName UEdGraphSchema_K2::PC_MCDelegate(TEXT("mcdelegate"));
const FName UEdGraphSchema_K2::PC_Object(TEXT("object"));
const FName UEdGraphSchema_K2::PC_Interface(TEXT("interface"));
const FName UEdGraphSchema_K2::PC_SoftObject(TEXT("softobject"));
const FName UEdGraphSchema_K2::PC_String(TEXT("string"));
const FName UEdGraphSchema_K2::PC_Text(TEXT("text"));
const FName UEdGraphSchema_K2::PC_Struct(TEXT("struct"));
const FName UEdGraphSchema_K2::PC_Wildcard(TEXT("wildcard"));
const FName UEdGraphSchema_K2::PC_Enum(TEXT("enum"));
const FName UEdGraphSchema_K2::PC_FieldPath(TEXT("fieldpath"));
const FName UEdGraphSchema_K2::PSC_Self(TEXT("self"));
const FName UEdGraphSchema_K2::PSC_Index(TEXT("index"));
const FName UEdGraphSchema_K2::PSC_Bitmask(TEXT("bitmask"));
const FName UEdGraphSchema_K2::PN_Execute(TEXT("execute"));
const FName UEdGraphSchema_K2::PN_Then(TEXT("then"));
const FName UEdGraphSchema_K2::PN_Completed(TEXT("Completed"));
const FName UEdGraphSchema_K2::PN_DelegateEntry(TEXT("delegate"));
const FName UEdGraphSchema_K2::PN_EntryPoint(TEXT("EntryPoint"));
const FName UEdGraphSchema_K2::PN_Self(TEXT("self"));
const FName UEdGraphSchema_K2::PN_Else(TEXT("else"));
const FName UEdGraphSchema_K2::PN_Loop(TEXT("loop"));
const FName UEdGraphSchema_K2::PN_After(TEXT("after"));
const FName UEdGraphSchema_K2::PN_ReturnValue(TEXT("ReturnValue"));
const FName UEdGraphSchema_K2::PN_ObjectToCast(TEXT("Object"));
const FName UEdGraphSchema_K2::PN_Condition(TEXT("Condition"));
const FName UEdGraphSchema_K2::PN_Start(TEXT("Start"));
const FName UEdGraphSchema_K2::PN_Stop(TEXT("Stop"));
const FName UEdGraphSchema_K2::PN_Index(TEXT("Index"));
const FName UEdGraphSchema_K2::PN_Item(TEXT("Item"));
const FName UEdGraphSchema_K2::PN_CastSucceeded(TEXT("then"));
const FName UEdGraphSchema_K2::PN_CastFailed(TEXT("CastFailed"));
const FString UEdGraphSchema_K2::PN_CastedValuePrefix(TEXT("As"));
const FName UEdGraphSchema_K2::FN_UserConstructionScript(TEXT("UserConstructionScript"));
const FName UEdGraphSchema_K2::FN_ExecuteUbergraphBase(TEXT("ExecuteUbergraph"));
const FName UEdGraphSchema_K2::GN_EventGraph(TEXT("EventGraph"));
const FName UEdGraphSchema_K2::GN_AnimGraph(TEXT("AnimGraph"));
const FText UEdGraphSchema_K2::VR_DefaultCategory(LOCTEXT("Default", "Default"));
const int32 UEdGraphSchema_K2::AG_LevelReference = 100;
const FName UEdGraphSchema_K2::AllObjectTypes(TEXT("ObjectTypes"));

namespace UE::BlueprintGraph::Private
{
	const UScriptStruct* VectorStruct() { return TBaseStructure<FVector>::Get(); }
	const UScriptStruct* RotatorStruct() { return TBaseStructure<FRotator>::Get(); }
	const UScriptStruct* TransformStruct() { return TBaseStructure<FTransform>::Get(); }
	const UScriptStruct* LinearColorStruct() { return TBaseStructure<FLinearColor>::Get(); }

	/** Puts an input-output pair in order; false when both pins point the same way. */
	template <typename PinType>
	bool SortPinsByDirection(PinType* PinA, PinType* PinB, PinType*& OutInputPin, PinType*& OutOutputPin)
	{
		if (PinA->Direction == EGPD_Input && PinB->Direction == EGPD_Output)
		{
			OutInputPin = PinA;
			OutOutputPin = PinB;
			return true;
		}
		if (PinA->Direction == EGPD_Output && PinB->Direction == EGPD_Input)
		{
			OutInputPin = PinB;
			OutOutputPin = PinA;
			return true;
		}
		return false;
	}

	/** The Blueprint that owns an object, found through its outers. */
	UBlueprint* FindOwningBlueprint(const UObject* Object)
	{
		for (UObject* Outer = const_cast<UObject*>(Object); Outer; Outer = Outer->GetOuter())
		{
			if (UBlueprint* Blueprint = Cast<UBlueprint>(Outer))
			{
				return Blueprint;
			}
		}
		return nullptr;
	}

	bool IsInterfaceClass(const UStruct* Struct)
	{
		return Struct && Struct->IsChildOf(UInterface::StaticClass());
	}

	/** A child struct stands in for its parent when it adds no member of its own. */
	bool StructAddsNoMembers(const UStruct* Child, const UStruct* Parent)
	{
		int32 ChildCount = 0;
		for (TFieldIterator<FProperty> It(Child); It; ++It)
		{
			++ChildCount;
		}
		int32 ParentCount = 0;
		for (TFieldIterator<FProperty> It(Parent); It; ++It)
		{
			++ParentCount;
		}
		return ChildCount == ParentCount && Child->GetPropertiesSize() == Parent->GetPropertiesSize();
	}

	bool StartsWithBitmask(FName SubCategory)
	{
		return SubCategory.ToString().StartsWith(UEdGraphSchema_K2::PSC_Bitmask.ToString());
	}

	/** The function a delegate pin type refers to, if it can be found. */
	const UFunction* ResolveSignature(const FSimpleMemberReference& Reference)
	{
		if (Reference.MemberName.IsNone())
		{
			return nullptr;
		}
		if (const UClass* ParentClass = Cast<UClass>(Reference.MemberParent.Get()))
		{
			return ParentClass->FindFunctionByName(Reference.MemberName);
		}
		if (UObject* Parent = Reference.MemberParent.Get())
		{
			return FindObject<UFunction>(Parent, *Reference.MemberName.ToString());
		}
		return nullptr;
	}

	UFunction* FindLibraryFunction(const TCHAR* ClassPath, const TCHAR* FunctionName)
	{
		if (UClass* Class = FindObject<UClass>(nullptr, ClassPath))
		{
			return Class->FindFunctionByName(FName(FunctionName));
		}
		return nullptr;
	}

	/**
	 * Every BlueprintAutocast function of the function libraries in memory, keyed by its input and output types.
	 * Built on first use from the catalogue (and any library class present then) in object creation order, so
	 * the first function registered for a pair of types wins in every run.
	 */
	class FAutocastFunctionMap
	{
	public:
		static FAutocastFunctionMap& Get(const UEdGraphSchema_K2* Schema)
		{
			static FAutocastFunctionMap Map(Schema);
			return Map;
		}

		UFunction* Find(const FEdGraphPinType& OutputPinType, const FEdGraphPinType& InputPinType) const
		{
			// An object output also matches casts declared for its super classes.
			UStruct* OutputStruct = Cast<UStruct>(OutputPinType.PinSubCategoryObject.Get());
			if (OutputPinType.PinCategory == UEdGraphSchema_K2::PC_Object && OutputStruct)
			{
				FEdGraphPinType Copy = OutputPinType;
				for (UStruct* Struct = OutputStruct; Struct; Struct = Struct->GetSuperStruct())
				{
					Copy.PinSubCategoryObject = Struct;
					if (UFunction* const* Found = Functions.Find(MakeKey(Copy, InputPinType)))
					{
						return *Found;
					}
				}
				return nullptr;
			}
			UFunction* const* Found = Functions.Find(MakeKey(OutputPinType, InputPinType));
			return Found ? *Found : nullptr;
		}

	private:
		explicit FAutocastFunctionMap(const UEdGraphSchema_K2* Schema)
		{
			UClass* LibraryClass = FindObject<UClass>(nullptr, TEXT("/Script/Engine.BlueprintFunctionLibrary"));
			if (!LibraryClass)
			{
				return;
			}
			TArray<UClass*> Libraries;
			GetDerivedClasses(LibraryClass, Libraries);
			for (UClass* Library : Libraries)
			{
				if ((Library->ClassFlags & (CLASS_Native | CLASS_Deprecated | CLASS_NewerVersionExists)) != CLASS_Native)
				{
					continue;
				}
				for (TFieldIterator<UFunction> It(Library, EFieldIteratorFlags::ExcludeSuper); It; ++It)
				{
					if (IsAutocastFunction(*It))
					{
						Insert(*It, Schema);
					}
				}
			}
		}

		static bool IsInputParameter(const FProperty* Property)
		{
			if (!Property->HasAnyPropertyFlags(CPF_Parm) || Property->HasAnyPropertyFlags(CPF_ReturnParm))
			{
				return false;
			}
			// Plain values and const references are inputs; non-const out parameters are outputs.
			const bool bOut = Property->HasAnyPropertyFlags(CPF_OutParm);
			const bool bConst = Property->HasAnyPropertyFlags(CPF_ConstParm);
			return bOut == bConst || !bOut;
		}

		static const FProperty* FirstInput(const UFunction* Function)
		{
			for (TFieldIterator<FProperty> It(Function); It; ++It)
			{
				if (IsInputParameter(*It))
				{
					return *It;
				}
			}
			return nullptr;
		}

		static bool IsAutocastFunction(const UFunction* Function)
		{
			return Function
				&& Function->HasMetaData(TEXT("BlueprintAutocast"))
				&& Function->HasAllFunctionFlags(FUNC_Static | FUNC_Native | FUNC_Public | FUNC_BlueprintPure)
				&& Function->GetReturnProperty()
				&& FirstInput(Function);
		}

		void Insert(UFunction* Function, const UEdGraphSchema_K2* Schema)
		{
			FEdGraphPinType InputType;
			FEdGraphPinType OutputType;
			if (!Schema->ConvertPropertyToPinType(FirstInput(Function), InputType)
				|| !Schema->ConvertPropertyToPinType(Function->GetReturnProperty(), OutputType))
			{
				return;
			}
			// A function returning a class of object also converts into inputs of its super classes.
			UStruct* ReturnStruct = Cast<UStruct>(OutputType.PinSubCategoryObject.Get());
			if (OutputType.PinCategory == UEdGraphSchema_K2::PC_Object && ReturnStruct)
			{
				for (UStruct* Struct = ReturnStruct; Struct; Struct = Struct->GetSuperStruct())
				{
					OutputType.PinSubCategoryObject = Struct;
					Functions.FindOrAdd(MakeKey(InputType, OutputType), Function);
				}
			}
			else
			{
				Functions.FindOrAdd(MakeKey(InputType, OutputType), Function);
			}
		}

		static FString Describe(FName Category, FName SubCategory, const UObject* Object)
		{
			const FString Sub = StartsWithBitmask(SubCategory) ? FString() : (SubCategory.IsNone() ? FString() : SubCategory.ToString());
			return FString::Printf(TEXT("%s;%s;%s"), *Category.ToString(), *Sub, Object ? *Object->GetPathName() : TEXT(""));
		}

		static FString DescribeType(const FEdGraphPinType& Type)
		{
			FString Key = FString::Printf(TEXT("%s;%d"), *Describe(Type.PinCategory, Type.PinSubCategory, Type.PinSubCategoryObject.Get()), (int32)Type.ContainerType);
			if (Type.IsMap())
			{
				Key += TEXT(";") + Describe(Type.PinValueType.TerminalCategory, Type.PinValueType.TerminalSubCategory, Type.PinValueType.TerminalSubCategoryObject.Get());
			}
			return Key;
		}

		// Keys read "<from type>|<to type>": the source (the function's input) first.
		static FString MakeKey(const FEdGraphPinType& From, const FEdGraphPinType& To)
		{
			return DescribeType(From) + TEXT("|") + DescribeType(To);
		}

		TMap<FString, UFunction*> Functions;
	};
}

using namespace UE::BlueprintGraph::Private;

UEdGraphSchema_K2::UEdGraphSchema_K2()
{
}

UEdGraphPin* UEdGraphSchema_K2::FindExecutionPin(const UEdGraphNode& Node, EEdGraphPinDirection PinDirection) const
{
	for (UEdGraphPin* Pin : Node.Pins)
	{
		if (Pin && Pin->Direction == PinDirection && IsExecPin(*Pin))
		{
			return Pin;
		}
	}
	return nullptr;
}

UEdGraphPin* UEdGraphSchema_K2::FindSelfPin(const UEdGraphNode& Node, EEdGraphPinDirection PinDirection) const
{
	for (UEdGraphPin* Pin : Node.Pins)
	{
		if (Pin && Pin->Direction == PinDirection && IsSelfPin(*Pin))
		{
			return Pin;
		}
	}
	return nullptr;
}

bool UEdGraphSchema_K2::IsSelfPin(const UEdGraphPin& Pin) const
{
	return Pin.PinName == PN_Self;
}

bool UEdGraphSchema_K2::IsDelegateCategory(const FName Category) const
{
	return Category == PC_Delegate;
}

//////////////////////////////////////////////////////////////////////////
// Connections

const FPinConnectionResponse UEdGraphSchema_K2::DetermineConnectionResponseOfCompatibleTypedPins(const UEdGraphPin* PinA, const UEdGraphPin* PinB, const UEdGraphPin* InputPin, const UEdGraphPin* OutputPin) const
{
	// Exec outputs lead to one place and data inputs read one value: a second link replaces the first.
	const bool bExecOutputTaken = IsExecPin(*OutputPin) && OutputPin->LinkedTo.Num() > 0;
	const bool bDataInputTaken = !IsExecPin(*InputPin) && InputPin->LinkedTo.Num() > 0;

	bool bSelfTakesMany = false;
	if (bDataInputTaken && IsSelfPin(*InputPin) && !InputPin->PinType.IsContainer() && !OutputPin->PinType.IsContainer())
	{
		const UK2Node* InputNode = Cast<UK2Node>(InputPin->GetOwningNode());
		if (InputNode && InputNode->AllowMultipleSelfs(false))
		{
			// Several targets are fine unless one of them is an array (that call is expanded per element).
			bSelfTakesMany = !InputPin->LinkedTo.ContainsByPredicate([](const UEdGraphPin* Linked) { return Linked && Linked->PinType.IsArray(); });
		}
	}

	if (bExecOutputTaken)
	{
		return FPinConnectionResponse(PinA == OutputPin ? CONNECT_RESPONSE_BREAK_OTHERS_A : CONNECT_RESPONSE_BREAK_OTHERS_B, TEXT("Replace existing output connections"));
	}
	if (bDataInputTaken && !bSelfTakesMany)
	{
		return FPinConnectionResponse(PinA == InputPin ? CONNECT_RESPONSE_BREAK_OTHERS_A : CONNECT_RESPONSE_BREAK_OTHERS_B, TEXT("Replace existing input connections"));
	}
	return FPinConnectionResponse(CONNECT_RESPONSE_MAKE, TEXT(""));
}

namespace UE::BlueprintGraph::Private
{
	/** Why two pins cannot be wired, with the engine's wording. */
	FText GetPinIncompatibilityReason(const UEdGraphPin* PinA, const UEdGraphPin* PinB, bool& bOutIsFatal)
	{
		const UEdGraphPin* InputPin = PinA->Direction == EGPD_Input ? PinA : PinB;
		const UEdGraphPin* OutputPin = InputPin == PinA ? PinB : PinA;
		const FEdGraphPinType& InputType = InputPin->PinType;
		const FEdGraphPinType& OutputType = OutputPin->PinType;

		FFormatNamedArguments Args;
		Args.Add(TEXT("PinAName"), PinA->GetDisplayName());
		Args.Add(TEXT("PinBName"), PinB->GetDisplayName());
		Args.Add(TEXT("PinAType"), UEdGraphSchema_K2::TypeToText(PinA->PinType));
		Args.Add(TEXT("PinBType"), UEdGraphSchema_K2::TypeToText(PinB->PinType));

		bOutIsFatal = true;
		FText Format = LOCTEXT("DefaultPinIncompatibilityMessage", "{PinAType} is not compatible with {PinBType}.");

		if (OutputType.PinCategory == UEdGraphSchema_K2::PC_Struct && InputType.PinCategory == UEdGraphSchema_K2::PC_Struct)
		{
			const UStruct* OutStruct = Cast<UStruct>(OutputType.PinSubCategoryObject.Get());
			const UStruct* InStruct = Cast<UStruct>(InputType.PinSubCategoryObject.Get());
			Format = (OutStruct && InStruct && OutStruct->IsChildOf(InStruct))
				? LOCTEXT("ChildStructIncompatible", "Only exactly matching structures are considered compatible. Derived structures are disallowed.")
				: LOCTEXT("StructsIncompatible", "Only exactly matching structures are considered compatible.");
		}
		else if (OutputType.PinCategory == UEdGraphSchema_K2::PC_Class
			&& (InputType.PinCategory == UEdGraphSchema_K2::PC_Object || InputType.PinCategory == UEdGraphSchema_K2::PC_Interface))
		{
			Args.Add(TEXT("OutputName"), OutputPin->GetDisplayName());
			Args.Add(TEXT("InputName"), InputPin->GetDisplayName());
			Format = LOCTEXT("ClassObjectIncompatible", "'{PinAName}' and '{PinBName}' are incompatible ('{OutputName}' is an object type, and '{InputName}' is a reference to an object instance).");
			// A class is an object underneath, so this one is only a warning.
			bOutIsFatal = InputType.PinCategory != UEdGraphSchema_K2::PC_Object;
		}
		else if (OutputType.PinCategory == UEdGraphSchema_K2::PC_Object && InputType.PinCategory == UEdGraphSchema_K2::PC_Class)
		{
			Args.Add(TEXT("OutputName"), OutputPin->GetDisplayName());
			Args.Add(TEXT("InputName"), InputPin->GetDisplayName());
			Args.Add(TEXT("InputType"), UEdGraphSchema_K2::TypeToText(InputType));
			Format = LOCTEXT("CannotGetClass", "'{PinAName}' and '{PinBName}' are not inherently compatible ('{InputName}' is an object type, and '{OutputName}' is a reference to an object instance).\nWe cannot use {OutputName}'s class because it is not a child of {InputType}.");
		}
		return FText::Format(Format, Args);
	}
}

const FPinConnectionResponse UEdGraphSchema_K2::CanCreateConnection(const UEdGraphPin* PinA, const UEdGraphPin* PinB) const
{
	if (!PinA || !PinB)
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_DISALLOW, TEXT("Invalid pins"));
	}

	const UK2Node* NodeA = Cast<UK2Node>(PinA->GetOwningNodeUnchecked());
	const UK2Node* NodeB = Cast<UK2Node>(PinB->GetOwningNodeUnchecked());
	if (!NodeA || !NodeB)
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_DISALLOW, TEXT("Invalid nodes"));
	}
	if (NodeA == NodeB)
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_DISALLOW, TEXT("Both are on the same node"));
	}
	if (PinA->bOrphanedPin || PinB->bOrphanedPin)
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_DISALLOW, TEXT("Cannot make new connections to orphaned pin"));
	}

	FString NodeMessage;
	if (NodeA->IsConnectionDisallowed(PinA, PinB, NodeMessage) || NodeB->IsConnectionDisallowed(PinB, PinA, NodeMessage))
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_DISALLOW, NodeMessage);
	}

	const UEdGraphPin* InputPin = nullptr;
	const UEdGraphPin* OutputPin = nullptr;
	if (!SortPinsByDirection(PinA, PinB, InputPin, OutputPin))
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_DISALLOW, TEXT("Directions are not compatible"));
	}

	// A node that calls itself once per self object takes an array on its single self pin.
	bool bIgnoreArray = false;
	if (const UK2Node* InputNode = Cast<UK2Node>(InputPin->GetOwningNode()))
	{
		if (InputNode->AllowMultipleSelfs(true) && !InputPin->PinType.IsContainer() && IsSelfPin(*InputPin))
		{
			bIgnoreArray = OutputPin->PinType.IsArray();
		}
	}

	const UClass* CallingContext = nullptr;
	if (const UBlueprint* Blueprint = FindOwningBlueprint(NodeA))
	{
		CallingContext = Blueprint->GeneratedClass ? Blueprint->GeneratedClass.Get() : Blueprint->ParentClass.Get();
	}

	if (ArePinsCompatible(OutputPin, InputPin, CallingContext, bIgnoreArray))
	{
		FPinConnectionResponse Response = DetermineConnectionResponseOfCompatibleTypedPins(PinA, PinB, InputPin, OutputPin);
		if (Response.Message.IsEmpty())
		{
			Response.Message = FText::FromString(NodeMessage);
		}
		else if (!NodeMessage.IsEmpty())
		{
			Response.Message = FText::Format(LOCTEXT("MultiMsgConnectionResponse", "{0} - {1}"), Response.Message, FText::FromString(NodeMessage));
		}
		return Response;
	}

	if (Cast<UK2Node_PromotableOperator>(InputPin->GetOwningNode())
		&& FTypePromotion::IsValidPromotion(InputPin->PinType, OutputPin->PinType))
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_MAKE_WITH_PROMOTION,
			FString::Printf(TEXT("Promote %s to %s"), *TypeToText(InputPin->PinType).ToString(), *TypeToText(OutputPin->PinType).ToString()));
	}

	if (SearchForAutocastFunction(OutputPin->PinType, InputPin->PinType).IsSet()
		|| FindSpecializedConversionNode(OutputPin->PinType, *InputPin, false).IsSet())
	{
		return FPinConnectionResponse(CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE,
			FString::Printf(TEXT("Convert %s to %s"), *TypeToText(OutputPin->PinType).ToString(), *TypeToText(InputPin->PinType).ToString()));
	}

	bool bIsFatal = true;
	const FText Reason = GetPinIncompatibilityReason(PinA, PinB, bIsFatal);
	FPinConnectionResponse Response(CONNECT_RESPONSE_DISALLOW, Reason.ToString());
	if (bIsFatal)
	{
		Response.SetFatal();
	}
	return Response;
}

bool UEdGraphSchema_K2::TryCreateConnection(UEdGraphPin* PinA, UEdGraphPin* PinB) const
{
	const bool bModified = UEdGraphSchema::TryCreateConnection(PinA, PinB);
	if (bModified)
	{
		if (UBlueprint* Blueprint = FindOwningBlueprint(PinA->GetOwningNodeUnchecked()))
		{
			Blueprint->Status = BS_Dirty;
		}
	}
	return bModified;
}

bool UEdGraphSchema_K2::CreatePromotedConnection(UEdGraphPin* PinA, UEdGraphPin* PinB) const
{
	if (!PinA || !PinB)
	{
		return false;
	}
	PinA->MakeLinkTo(PinB);
	if (UBlueprint* Blueprint = FindOwningBlueprint(PinA->GetOwningNodeUnchecked()))
	{
		Blueprint->Status = BS_Dirty;
	}
	return true;
}

bool UEdGraphSchema_K2::ArePinsCompatible(const UEdGraphPin* PinA, const UEdGraphPin* PinB, const UClass* CallingContext, bool bIgnoreArray) const
{
	const UEdGraphPin* InputPin = nullptr;
	const UEdGraphPin* OutputPin = nullptr;
	if (PinA->Direction == EGPD_Input && PinB->Direction == EGPD_Output)
	{
		InputPin = PinA;
		OutputPin = PinB;
	}
	else if (PinB->Direction == EGPD_Input && PinA->Direction == EGPD_Output)
	{
		InputPin = PinB;
		OutputPin = PinA;
	}
	else
	{
		return false;
	}

	// A node may refuse arrays on a plain wildcard input (and containers on a wildcard output).
	bool bArrayAllowed = bIgnoreArray;
	if (!bArrayAllowed)
	{
		const UK2Node* InputNode = Cast<UK2Node>(InputPin->GetOwningNode());
		bArrayAllowed = !InputNode || InputNode->DoesInputWildcardPinAcceptArray(InputPin) || InputNode->DoesOutputWildcardPinAcceptContainer(OutputPin);
		if (!bArrayAllowed)
		{
			const bool bPlainWildcardInput = InputPin->PinType.PinCategory == PC_Wildcard && !InputPin->PinType.IsArray();
			bArrayAllowed = !(bPlainWildcardInput && OutputPin->PinType.IsArray());
		}
	}
	return bArrayAllowed && ArePinTypesCompatible(OutputPin->PinType, InputPin->PinType, CallingContext, bIgnoreArray);
}

bool UEdGraphSchema_K2::ArePinTypesCompatible(const FEdGraphPinType& Output, const FEdGraphPinType& Input, const UClass* CallingContext, bool bIgnoreArray) const
{
	if (!bIgnoreArray && Output.ContainerType != Input.ContainerType
		&& (Input.PinCategory != PC_Wildcard || Input.IsContainer())
		&& (Output.PinCategory != PC_Wildcard || Output.IsContainer()))
	{
		return false;
	}

	if (Output.PinCategory == Input.PinCategory)
	{
		if (Output.PinSubCategory == Input.PinSubCategory
			&& Output.PinSubCategoryObject == Input.PinSubCategoryObject
			&& Output.PinSubCategoryMemberReference == Input.PinSubCategoryMemberReference)
		{
			if (Input.IsMap())
			{
				return Input.PinValueType.TerminalCategory == PC_Wildcard
					|| Output.PinValueType.TerminalCategory == PC_Wildcard
					|| (Input.PinValueType.TerminalCategory == PC_Real && Output.PinValueType.TerminalCategory == PC_Real)
					|| Input.PinValueType == Output.PinValueType;
			}
			return true;
		}
		// Float and double reals meet freely: the compiler casts between them.
		if (Output.PinCategory == PC_Real)
		{
			return true;
		}
		if (Output.PinCategory == PC_Interface)
		{
			const UClass* OutputClass = Cast<UClass>(Output.PinSubCategoryObject.Get());
			const UClass* InputClass = Cast<UClass>(Input.PinSubCategoryObject.Get());
			return OutputClass && InputClass && IsInterfaceClass(OutputClass) && IsInterfaceClass(InputClass) && OutputClass->IsChildOf(InputClass);
		}
		if (Output.PinCategory == PC_SoftObject || Output.PinCategory == PC_SoftClass)
		{
			const UClass* OutputClass = Output.PinSubCategory == PSC_Self ? CallingContext : Cast<UClass>(Output.PinSubCategoryObject.Get());
			const UClass* InputClass = Input.PinSubCategory == PSC_Self ? CallingContext : Cast<UClass>(Input.PinSubCategoryObject.Get());
			return OutputClass && InputClass && OutputClass->IsChildOf(InputClass);
		}
		if (Output.PinCategory == PC_Object || Output.PinCategory == PC_Struct || Output.PinCategory == PC_Class)
		{
			// "self" stands for the class being edited.
			const UStruct* OutputStruct = Output.PinSubCategory == PSC_Self ? CallingContext : Cast<UStruct>(Output.PinSubCategoryObject.Get());
			const UStruct* InputStruct = Input.PinSubCategory == PSC_Self ? CallingContext : Cast<UStruct>(Input.PinSubCategoryObject.Get());
			if (!OutputStruct || !InputStruct)
			{
				return false;
			}
			if (Output.PinCategory == PC_Struct)
			{
				return OutputStruct->IsChildOf(InputStruct) && StructAddsNoMembers(OutputStruct, InputStruct);
			}
			const bool bInputIsInterface = IsInterfaceClass(InputStruct);
			const bool bOutputIsInterface = IsInterfaceClass(OutputStruct);
			const UClass* OutputClass = Cast<UClass>(OutputStruct);
			const UClass* InputClass = Cast<UClass>(InputStruct);
			if (bInputIsInterface != bOutputIsInterface)
			{
				// An interface and an object meet only through the object's class implementing the interface.
				if (bInputIsInterface && OutputClass)
				{
					return OutputClass->ImplementsInterface(InputClass);
				}
				if (bOutputIsInterface && InputClass)
				{
					return InputClass->ImplementsInterface(OutputClass);
				}
				return false;
			}
			return OutputStruct->IsChildOf(InputStruct);
		}
		if (Output.PinCategory == PC_Byte && Output.PinSubCategory == Input.PinSubCategory)
		{
			// An enum flows into a plain byte, not the other way round.
			return Input.PinSubCategoryObject.Get() == nullptr;
		}
		if (Output.PinCategory == PC_Byte || Output.PinCategory == PC_Int)
		{
			return StartsWithBitmask(Output.PinSubCategory) || StartsWithBitmask(Input.PinSubCategory);
		}
		if (Output.PinCategory == PC_Delegate || Output.PinCategory == PC_MCDelegate)
		{
			const UFunction* OutputSignature = ResolveSignature(Output.PinSubCategoryMemberReference);
			const UFunction* InputSignature = ResolveSignature(Input.PinSubCategoryMemberReference);
			return !OutputSignature || !InputSignature || OutputSignature->IsSignatureCompatibleWith(InputSignature);
		}
		return false;
	}

	if (Output.PinCategory == PC_Wildcard || Input.PinCategory == PC_Wildcard)
	{
		if (Output.PinSubCategory == PSC_Index)
		{
			return IsIndexWildcardCompatible(Input);
		}
		if (Input.PinSubCategory == PSC_Index)
		{
			return IsIndexWildcardCompatible(Output);
		}
		return true;
	}

	if (Output.PinCategory == PC_Object && Input.PinCategory == PC_Interface)
	{
		const UClass* OutputClass = Cast<UClass>(Output.PinSubCategoryObject.Get());
		const UClass* InterfaceClass = Cast<UClass>(Input.PinSubCategoryObject.Get());
		if (!OutputClass && Output.PinSubCategory == PSC_Self)
		{
			OutputClass = CallingContext;
		}
		return OutputClass && InterfaceClass && (OutputClass->ImplementsInterface(InterfaceClass) || OutputClass->IsChildOf(InterfaceClass));
	}
	return false;
}

bool UEdGraphSchema_K2::ArePinTypesEquivalent(const FEdGraphPinType& PinA, const FEdGraphPinType& PinB) const
{
	if (PinA.PinCategory == PC_Real && PinB.PinCategory == PC_Real)
	{
		return true;
	}
	return PinA.PinCategory == PinB.PinCategory
		&& PinA.PinSubCategory == PinB.PinSubCategory
		&& PinA.PinSubCategoryObject == PinB.PinSubCategoryObject
		&& PinA.ContainerType == PinB.ContainerType
		&& PinA.bIsWeakPointer == PinB.bIsWeakPointer;
}

TOptional<UEdGraphSchema_K2::FSearchForAutocastFunctionResults> UEdGraphSchema_K2::SearchForAutocastFunction(const FEdGraphPinType& OutputPinType, const FEdGraphPinType& InputPinType) const
{
	TOptional<FSearchForAutocastFunctionResults> Result;
	auto Use = [&Result](const UFunction* Function)
	{
		if (Function)
		{
			Result = FSearchForAutocastFunctionResults{ Function->GetFName(), Function->GetOwnerClass() };
		}
	};

	if (OutputPinType.ContainerType != InputPinType.ContainerType)
	{
		if (OutputPinType.IsSet() && InputPinType.IsArray())
		{
			Use(FindLibraryFunction(TEXT("/Script/Engine.BlueprintSetLibrary"), TEXT("Set_ToArray")));
		}
	}
	else if (OutputPinType.PinCategory == PC_Interface && InputPinType.PinCategory == PC_Object)
	{
		if (Cast<UClass>(InputPinType.PinSubCategoryObject.Get()) == UObject::StaticClass())
		{
			Use(FindLibraryFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("Conv_InterfaceToObject")));
		}
	}
	else if (OutputPinType.PinCategory == PC_Object)
	{
		const UClass* OutputClass = Cast<UClass>(OutputPinType.PinSubCategoryObject.Get());
		if (InputPinType.PinCategory == PC_Class)
		{
			const UClass* InputClass = Cast<UClass>(InputPinType.PinSubCategoryObject.Get());
			if (OutputClass && InputClass && OutputClass->IsChildOf(InputClass))
			{
				Use(FindLibraryFunction(TEXT("/Script/Engine.GameplayStatics"), TEXT("GetObjectClass")));
			}
		}
		else if (InputPinType.PinCategory == PC_String)
		{
			Use(FindLibraryFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("GetDisplayName")));
		}
	}
	else if (OutputPinType.PinCategory == PC_Class)
	{
		if (InputPinType.PinCategory == PC_String)
		{
			Use(FindLibraryFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("GetClassDisplayName")));
		}
	}
	else if (OutputPinType.PinCategory == PC_Struct && OutputPinType.PinSubCategoryObject.Get() == RotatorStruct())
	{
		if (InputPinType.PinCategory == PC_Struct && InputPinType.PinSubCategoryObject.Get() == TransformStruct())
		{
			Use(FindLibraryFunction(TEXT("/Script/Engine.KismetMathLibrary"), TEXT("MakeTransform")));
		}
	}

	if (!Result.IsSet())
	{
		const FAutocastFunctionMap& Map = FAutocastFunctionMap::Get(this);
		const UFunction* Function = Map.Find(OutputPinType, InputPinType);
		// Single-precision signatures are gone from the libraries: try the double-precision twin.
		if (!Function && OutputPinType.PinSubCategory == PC_Float)
		{
			FEdGraphPinType Copy = OutputPinType;
			Copy.PinSubCategory = PC_Double;
			Function = Map.Find(Copy, InputPinType);
		}
		else if (!Function && InputPinType.PinSubCategory == PC_Float)
		{
			FEdGraphPinType Copy = InputPinType;
			Copy.PinSubCategory = PC_Double;
			Function = Map.Find(OutputPinType, Copy);
		}
		Use(Function);
	}
	return Result;
}

TOptional<UEdGraphSchema_K2::FFindSpecializedConversionNodeResults> UEdGraphSchema_K2::FindSpecializedConversionNode(const FEdGraphPinType& OutputPinType, const UEdGraphPin& InputPin, bool bCreateNode) const
{
	TOptional<FFindSpecializedConversionNodeResults> Result;
	const FEdGraphPinType& InputPinType = InputPin.PinType;

	// A single value into an array input: wrapped by a Make Array node.
	if (!OutputPinType.IsContainer() && InputPinType.IsArray() && ArePinTypesCompatible(OutputPinType, InputPinType, nullptr, true))
	{
		Result.Emplace();
		if (bCreateNode)
		{
			UK2Node_MakeArray* MakeArray = NewObject<UK2Node_MakeArray>(GetTransientPackage(), NAME_None, RF_Transient);
			MakeArray->NumInputs = 1;
			Result->TargetNode = MakeArray;
		}
		return Result;
	}

	// An object into the target of a call, through one of its members that holds the function's class.
	const bool bCallTarget = Cast<UK2Node_CallFunction>(InputPin.GetOwningNode()) != nullptr && IsSelfPin(InputPin)
		&& (OutputPinType.PinCategory == PC_Object || (OutputPinType.PinCategory == PC_Interface && !OutputPinType.IsContainer()));
	if (bCallTarget)
	{
		const UClass* OutputClass = Cast<UClass>(OutputPinType.PinSubCategoryObject.Get());
		const UClass* TargetClass = Cast<UClass>(InputPinType.PinSubCategoryObject.Get());
		if (OutputClass && TargetClass)
		{
			for (TFieldIterator<FObjectProperty> It(OutputClass); It; ++It)
			{
				if (It->HasAllPropertyFlags(CPF_BlueprintVisible) && It->PropertyClass && It->PropertyClass->IsChildOf(TargetClass))
				{
					// The call's target is read from that member of the object.
					Result.Emplace();
					if (bCreateNode)
					{
						UK2Node_VariableGet* GetNode = NewObject<UK2Node_VariableGet>(GetTransientPackage(), NAME_None, RF_Transient);
						GetNode->VariableReference.SetFromField<FProperty>(*It, false);
						Result->TargetNode = GetNode;
					}
					return Result;
				}
			}
		}
	}

	// Enum to its entry's name or string.
	if (!InputPinType.IsContainer() && (InputPinType.PinCategory == PC_Name || InputPinType.PinCategory == PC_String)
		&& !OutputPinType.IsContainer() && OutputPinType.PinCategory == PC_Byte && Cast<UEnum>(OutputPinType.PinSubCategoryObject.Get()))
	{
		Result.Emplace();
		if (bCreateNode)
		{
			Result->TargetNode = InputPinType.PinCategory == PC_Name
				? NewObject<UK2Node_GetEnumeratorName>(GetTransientPackage(), NAME_None, RF_Transient)
				: NewObject<UK2Node_GetEnumeratorNameAsString>(GetTransientPackage(), NAME_None, RF_Transient);
		}
		return Result;
	}

	// A plain byte into an enum input is checked by a byte-to-enum cast.
	if (!InputPinType.IsContainer() && InputPinType.PinCategory == PC_Byte && Cast<UEnum>(InputPinType.PinSubCategoryObject.Get())
		&& !OutputPinType.IsContainer() && OutputPinType.PinCategory == PC_Byte)
	{
		Result.Emplace();
		if (bCreateNode)
		{
			UK2Node_CastByteToEnum* CastNode = NewObject<UK2Node_CastByteToEnum>(GetTransientPackage(), NAME_None, RF_Transient);
			CastNode->Enum = Cast<UEnum>(InputPinType.PinSubCategoryObject.Get());
			CastNode->bSafe = true;
			Result->TargetNode = CastNode;
		}
		return Result;
	}

	if (!OutputPinType.IsContainer())
	{
		const UBlueprint* Blueprint = FindOwningBlueprint(InputPin.GetOwningNodeUnchecked());
		const UClass* BlueprintClass = Blueprint ? (Blueprint->GeneratedClass ? Blueprint->GeneratedClass.Get() : Blueprint->ParentClass.Get()) : nullptr;
		const UClass* InputClass = Cast<UClass>(InputPinType.PinSubCategoryObject.Get());
		if (!InputClass && InputPinType.PinSubCategory == PSC_Self)
		{
			InputClass = BlueprintClass;
		}
		const UClass* OutputClass = Cast<UClass>(OutputPinType.PinSubCategoryObject.Get());
		if (!OutputClass && OutputPinType.PinSubCategory == PSC_Self)
		{
			OutputClass = BlueprintClass;
		}

		// An interface into an object input is cast. Object-to-child casts need the editor's
		// "auto-cast object connections" setting, which is off by default and not offered here.
		if (OutputPinType.PinCategory == PC_Interface && InputPinType.PinCategory == PC_Object)
		{
			if (InputClass && OutputClass && (InputClass->ImplementsInterface(OutputClass) || OutputClass->IsChildOf(InputClass)))
			{
				Result.Emplace();
				if (bCreateNode)
				{
					UK2Node_DynamicCast* CastNode = NewObject<UK2Node_DynamicCast>(GetTransientPackage(), NAME_None, RF_Transient);
					CastNode->TargetType = const_cast<UClass*>(InputClass);
					CastNode->SetPurity(true);
					Result->TargetNode = CastNode;
				}
				return Result;
			}
		}

		// Soft and hard references convert into each other when the classes agree.
		if (InputClass && OutputClass && OutputClass->IsChildOf(InputClass))
		{
			const bool bSoftToHard = (OutputPinType.PinCategory == PC_SoftObject && InputPinType.PinCategory == PC_Object)
				|| (OutputPinType.PinCategory == PC_SoftClass && InputPinType.PinCategory == PC_Class)
				|| (OutputPinType.PinCategory == PC_Object && InputPinType.PinCategory == PC_SoftObject)
				|| (OutputPinType.PinCategory == PC_Class && InputPinType.PinCategory == PC_SoftClass);
			if (bSoftToHard)
			{
				Result.Emplace();
				if (bCreateNode)
				{
					Result->TargetNode = NewObject<UK2Node_ConvertAsset>(GetTransientPackage(), NAME_None, RF_Transient);
				}
				return Result;
			}
		}
	}
	return Result;
}

//////////////////////////////////////////////////////////////////////////
// Type names

FText UEdGraphSchema_K2::GetCategoryText(const FName Category, const bool bForMenu)
{
	return GetCategoryText(Category, NAME_None, bForMenu);
}

FText UEdGraphSchema_K2::GetCategoryText(FName Category, FName SubCategory, bool bForMenu)
{
	if (Category.IsNone())
	{
		return FText::GetEmpty();
	}
	// Reals name their precision only in menus.
	if (bForMenu && Category == PC_Real)
	{
		if (SubCategory == PC_Float)
		{
			return LOCTEXT("FloatCategory", "Float (single-precision)");
		}
		if (SubCategory == PC_Double)
		{
			return LOCTEXT("DoubleCategory", "Float (double-precision)");
		}
	}
	struct FCategoryText
	{
		const FName& Category;
		const TCHAR* Key;
		const TCHAR* Text;
	};
	static const FCategoryText Texts[] = {
		{ PC_Exec, TEXT("Exec"), TEXT("Exec") },
		{ PC_Boolean, TEXT("BoolCategory"), TEXT("Boolean") },
		{ PC_Byte, TEXT("ByteCategory"), TEXT("Byte") },
		{ PC_Class, TEXT("ClassCategory"), TEXT("Class Reference") },
		{ PC_Int, TEXT("IntCategory"), TEXT("Integer") },
		{ PC_Int64, TEXT("Int64Category"), TEXT("Integer64") },
		{ PC_Real, TEXT("RealCategory"), TEXT("Float") },
		{ PC_Float, TEXT("FloatCategory"), TEXT("Float (single-precision)") },
		{ PC_Double, TEXT("DoubleCategory"), TEXT("Float (double-precision)") },
		{ PC_Name, TEXT("NameCategory"), TEXT("Name") },
		{ PC_Delegate, TEXT("DelegateCategory"), TEXT("Delegate") },
		{ PC_MCDelegate, TEXT("MulticastDelegateCategory"), TEXT("Multicast Delegate") },
		{ PC_Object, TEXT("ObjectCategory"), TEXT("Object Reference") },
		{ PC_Interface, TEXT("InterfaceCategory"), TEXT("Interface") },
		{ PC_String, TEXT("StringCategory"), TEXT("String") },
		{ PC_Text, TEXT("TextCategory"), TEXT("Text") },
		{ PC_Struct, TEXT("StructCategory"), TEXT("Structure") },
		{ PC_Wildcard, TEXT("WildcardCategory"), TEXT("Wildcard") },
		{ PC_Enum, TEXT("EnumCategory"), TEXT("Enum") },
		{ PC_SoftObject, TEXT("SoftObjectReferenceCategory"), TEXT("Soft Object Reference") },
		{ PC_SoftClass, TEXT("SoftClassReferenceCategory"), TEXT("Soft Class Reference") },
		{ PC_FieldPath, TEXT("FieldPathReferenceCategory"), TEXT("Property Reference") },
		{ AllObjectTypes, TEXT("AllObjectTypes"), TEXT("Object Types") },
	};
	for (const FCategoryText& Entry : Texts)
	{
		if (Entry.Category == Category)
		{
			return FText::AsLocalizable_Advanced(TEXT(LOCTEXT_NAMESPACE), Entry.Key, Entry.Text);
		}
	}
	return FText::FromName(Category);
}

FText UEdGraphSchema_K2::TerminalTypeToText(const FName Category, const FName SubCategory, UObject* SubCategoryObject, bool bIsWeakPtr)
{
	if (SubCategory != PSC_Bitmask && SubCategoryObject)
	{
		if (Category == PC_Byte)
		{
			return FText::FormatNamed(LOCTEXT("EnumAsText", "{EnumName} Enum"), TEXT("EnumName"), FText::FromString(SubCategoryObject->GetName()));
		}
		const UField* Field = Cast<UField>(SubCategoryObject);
		const FString ObjectName = Field ? Field->GetDisplayNameText().ToString() : SubCategoryObject->GetName();
		if (bIsWeakPtr)
		{
			FFormatNamedArguments Args;
			Args.Add(TEXT("Category"), FText::FromName(Category));
			Args.Add(TEXT("ObjectName"), FText::FromString(ObjectName));
			return FText::Format(LOCTEXT("WeakPtrAsText", "{ObjectName} Weak {Category}"), Args);
		}
		FFormatNamedArguments Args;
		Args.Add(TEXT("ObjectName"), FText::FromString(FName::NameToDisplayString(ObjectName, false)));
		// The math structs everybody knows are named without "Structure".
		if (Category == PC_Struct && (SubCategoryObject == VectorStruct() || SubCategoryObject == RotatorStruct() || SubCategoryObject == TransformStruct()))
		{
			return FText::Format(LOCTEXT("ObjectAsTextWithoutCategory", "{ObjectName}"), Args);
		}
		if ((Category == PC_Object || Category == PC_SoftObject) && SubCategoryObject == UObject::StaticClass())
		{
			return GetCategoryText(Category);
		}
		const UClass* AsClass = Cast<UClass>(SubCategoryObject);
		const bool bIsInterface = AsClass && AsClass->HasAnyClassFlags(CLASS_Interface);
		Args.Add(TEXT("Category"), GetCategoryText(bIsInterface ? PC_Interface : Category));
		return FText::Format(LOCTEXT("ObjectAsText", "{ObjectName} {Category}"), Args);
	}
	if (!SubCategory.IsNone())
	{
		if (Category == PC_Real)
		{
			return GetCategoryText(Category, SubCategory, true);
		}
		FFormatNamedArguments Args;
		Args.Add(TEXT("Category"), GetCategoryText(Category));
		Args.Add(TEXT("ObjectName"), FText::FromString(FName::NameToDisplayString(SubCategory.ToString(), false)));
		return FText::Format(LOCTEXT("ObjectAsText", "{ObjectName} {Category}"), Args);
	}
	return GetCategoryText(Category);
}

FText UEdGraphSchema_K2::TypeToText(const FEdGraphPinType& Type)
{
	const FText Terminal = TerminalTypeToText(Type.PinCategory, Type.PinSubCategory, Type.PinSubCategoryObject.Get(), Type.bIsWeakPointer);
	if (Type.IsMap())
	{
		FFormatNamedArguments Args;
		Args.Add(TEXT("KeyTitle"), Terminal);
		Args.Add(TEXT("ValueTitle"), TerminalTypeToText(Type.PinValueType.TerminalCategory, Type.PinValueType.TerminalSubCategory,
			Type.PinValueType.TerminalSubCategoryObject.Get(), Type.PinValueType.bTerminalIsWeakPointer));
		return FText::Format(LOCTEXT("MapAsText", "Map of {KeyTitle}s to {ValueTitle}s"), Args);
	}
	if (Type.IsSet())
	{
		return FText::FormatNamed(LOCTEXT("SetAsText", "Set of {PropertyTitle}s"), TEXT("PropertyTitle"), Terminal);
	}
	if (Type.IsArray())
	{
		return FText::FormatNamed(LOCTEXT("ArrayAsText", "Array of {PropertyTitle}s"), TEXT("PropertyTitle"), Terminal);
	}
	if (Type.bIsReference)
	{
		return FText::FormatNamed(LOCTEXT("PropertyByRef", "{PropertyTitle} (by ref)"), TEXT("PropertyTitle"), Terminal);
	}
	return Terminal;
}

FText UEdGraphSchema_K2::TypeToText(const FProperty* const Property)
{
	if (!Property)
	{
		return FText::GetEmpty();
	}
	FEdGraphPinType PinType;
	if (const FStructProperty* Struct = CastField<FStructProperty>(Property))
	{
		if (Struct->Struct)
		{
			PinType.PinCategory = PC_Struct;
			PinType.PinSubCategoryObject = Struct->Struct;
			return TypeToText(PinType);
		}
	}
	else if (const FClassProperty* Class = CastField<FClassProperty>(Property))
	{
		if (Class->MetaClass)
		{
			PinType.PinCategory = PC_Class;
			PinType.PinSubCategoryObject = Class->MetaClass;
			return TypeToText(PinType);
		}
	}
	else if (const FInterfaceProperty* Interface = CastField<FInterfaceProperty>(Property))
	{
		if (Interface->InterfaceClass)
		{
			PinType.PinCategory = PC_Interface;
			PinType.PinSubCategoryObject = Interface->InterfaceClass;
			return TypeToText(PinType);
		}
	}
	else if (const FObjectPropertyBase* Object = CastField<FObjectPropertyBase>(Property))
	{
		if (!Object->PropertyClass)
		{
			return FText::GetEmpty();
		}
		PinType.PinCategory = PC_Object;
		PinType.PinSubCategoryObject = Object->PropertyClass;
		PinType.bIsWeakPointer = Property->IsA(FWeakObjectProperty::StaticClass());
		return TypeToText(PinType);
	}
	else if (const FArrayProperty* Array = CastField<FArrayProperty>(Property))
	{
		if (Array->Inner)
		{
			return FText::FormatNamed(LOCTEXT("ArrayPropertyText", "Array of {ArrayType}"), TEXT("ArrayType"), TypeToText(Array->Inner));
		}
	}
	else if (const FSetProperty* Set = CastField<FSetProperty>(Property))
	{
		if (Set->ElementProp)
		{
			return FText::FormatNamed(LOCTEXT("SetPropertyText", "Set of {SetType}"), TEXT("SetType"), TypeToText(Set->ElementProp));
		}
	}
	else if (const FMapProperty* Map = CastField<FMapProperty>(Property))
	{
		if (Map->KeyProp && Map->ValueProp)
		{
			return FText::FormatNamed(LOCTEXT("MapPropertyText", "Map of {MapKeyType} to {MapValueType}"),
				TEXT("MapKeyType"), TypeToText(Map->KeyProp), TEXT("MapValueType"), TypeToText(Map->ValueProp));
		}
	}
	return FText::FromString(Property->GetClass()->GetName());
}

//////////////////////////////////////////////////////////////////////////
// Properties and pin types

bool UEdGraphSchema_K2::GetPropertyCategoryInfo(const FProperty* TestProperty, FName& OutCategory, FName& OutSubCategory, UObject*& OutSubCategoryObject, bool& bOutIsWeakPointer)
{
	OutSubCategoryObject = nullptr;
	bOutIsWeakPointer = false;
	if (!TestProperty)
	{
		OutCategory = TEXT("bad_type");
		return false;
	}

	if (const FStructProperty* StructProperty = CastField<FStructProperty>(TestProperty))
	{
		OutCategory = PC_Struct;
		OutSubCategoryObject = StructProperty->Struct;
	}
	else if (const FSoftClassProperty* SoftClassProperty = CastField<FSoftClassProperty>(TestProperty))
	{
		OutCategory = PC_SoftClass;
		OutSubCategoryObject = SoftClassProperty->MetaClass;
	}
	else if (const FSoftObjectProperty* SoftObjectProperty = CastField<FSoftObjectProperty>(TestProperty))
	{
		OutCategory = PC_SoftObject;
		OutSubCategoryObject = SoftObjectProperty->PropertyClass;
	}
	else if (const FClassProperty* ClassProperty = CastField<FClassProperty>(TestProperty))
	{
		OutCategory = PC_Class;
		OutSubCategoryObject = ClassProperty->MetaClass;
	}
	else if (const FInterfaceProperty* InterfaceProperty = CastField<FInterfaceProperty>(TestProperty))
	{
		OutCategory = PC_Interface;
		OutSubCategoryObject = InterfaceProperty->InterfaceClass;
	}
	else if (const FObjectPropertyBase* ObjectProperty = CastField<FObjectPropertyBase>(TestProperty))
	{
		OutCategory = PC_Object;
		OutSubCategoryObject = ObjectProperty->PropertyClass;
		bOutIsWeakPointer = TestProperty->IsA(FWeakObjectProperty::StaticClass());
	}
	else if (TestProperty->IsA(FFloatProperty::StaticClass()))
	{
		OutCategory = PC_Real;
		OutSubCategory = PC_Float;
	}
	else if (TestProperty->IsA(FDoubleProperty::StaticClass()))
	{
		OutCategory = PC_Real;
		OutSubCategory = PC_Double;
	}
	else if (TestProperty->IsA(FInt64Property::StaticClass()))
	{
		OutCategory = PC_Int64;
	}
	else if (TestProperty->IsA(FIntProperty::StaticClass()))
	{
		OutCategory = PC_Int;
		if (TestProperty->HasMetaData(FBlueprintMetadata::MD_Bitmask))
		{
			OutSubCategory = PSC_Bitmask;
		}
	}
	else if (const FByteProperty* ByteProperty = CastField<FByteProperty>(TestProperty))
	{
		OutCategory = PC_Byte;
		if (TestProperty->HasMetaData(FBlueprintMetadata::MD_Bitmask))
		{
			OutSubCategory = PSC_Bitmask;
		}
		else
		{
			OutSubCategoryObject = ByteProperty->Enum;
		}
	}
	else if (const FEnumProperty* EnumProperty = CastField<FEnumProperty>(TestProperty))
	{
		// Blueprints hold enums in a byte; wider enums cannot be pins.
		if (!EnumProperty->GetUnderlyingProperty() || !EnumProperty->GetUnderlyingProperty()->IsA(FByteProperty::StaticClass()))
		{
			OutCategory = TEXT("unsupported_enum_type: enum size is larger than a byte");
			return false;
		}
		OutCategory = PC_Byte;
		if (TestProperty->HasMetaData(FBlueprintMetadata::MD_Bitmask))
		{
			OutSubCategory = PSC_Bitmask;
		}
		else
		{
			OutSubCategoryObject = EnumProperty->GetEnum();
		}
	}
	else if (TestProperty->IsA(FNameProperty::StaticClass()))
	{
		OutCategory = PC_Name;
	}
	else if (TestProperty->IsA(FBoolProperty::StaticClass()))
	{
		OutCategory = PC_Boolean;
	}
	else if (TestProperty->IsA(FStrProperty::StaticClass()))
	{
		OutCategory = PC_String;
	}
	else if (TestProperty->IsA(FTextProperty::StaticClass()))
	{
		OutCategory = PC_Text;
	}
	else
	{
		OutCategory = TEXT("bad_type");
		return false;
	}
	return true;
}

bool UEdGraphSchema_K2::IsWildcardProperty(const FProperty* ParamProperty)
{
	const UFunction* Function = ParamProperty ? ParamProperty->GetOwner<UFunction>() : nullptr;
	if (!Function)
	{
		return false;
	}
	// Parameters named by the function's wildcard metadata take their type from what they are wired to.
	const FString Name = ParamProperty->GetName();
	for (const FName& Key : { FBlueprintMetadata::MD_ArrayParam, FBlueprintMetadata::MD_ArrayDependentParam, FBlueprintMetadata::MD_SetParam,
		FBlueprintMetadata::MD_MapParam, FBlueprintMetadata::MD_MapKeyParam, FBlueprintMetadata::MD_MapValueParam, FBlueprintMetadata::MD_CustomStructureParam })
	{
		if (!Function->HasMetaData(Key))
		{
			continue;
		}
		TArray<FString> Names;
		Function->GetMetaData(Key).ParseIntoArray(Names, TEXT(","), true);
		for (FString& Entry : Names)
		{
			TArray<FString> Alternatives;
			Entry.ParseIntoArray(Alternatives, TEXT("|"), true);
			for (FString& Alternative : Alternatives)
			{
				if (Alternative.TrimStartAndEnd() == Name)
				{
					return true;
				}
			}
		}
	}
	return false;
}

bool UEdGraphSchema_K2::ConvertPropertyToPinType(const FProperty* Property, FEdGraphPinType& TypeOut) const
{
	if (!Property)
	{
		TypeOut.PinCategory = TEXT("bad_type");
		return false;
	}
	TypeOut.PinSubCategory = NAME_None;

	const FMapProperty* MapProperty = CastField<FMapProperty>(Property);
	const FSetProperty* SetProperty = CastField<FSetProperty>(Property);
	const FArrayProperty* ArrayProperty = CastField<FArrayProperty>(Property);
	const FProperty* TestProperty = Property;
	if (MapProperty)
	{
		TestProperty = MapProperty->KeyProp;
		UObject* ValueObject = nullptr;
		bool bValueIsWeak = false;
		const bool bValueOk = GetPropertyCategoryInfo(MapProperty->ValueProp, TypeOut.PinValueType.TerminalCategory, TypeOut.PinValueType.TerminalSubCategory, ValueObject, bValueIsWeak);
		TypeOut.PinValueType.TerminalSubCategoryObject = ValueObject;
		if (!bValueOk || bValueIsWeak)
		{
			return false;
		}
		TypeOut.PinValueType.bTerminalIsUObjectWrapper = MapProperty->ValueProp->HasAllPropertyFlags(CPF_UObjectWrapper);
	}
	else if (SetProperty)
	{
		TestProperty = SetProperty->ElementProp;
	}
	else if (ArrayProperty)
	{
		TestProperty = ArrayProperty->Inner;
	}
	if (!TestProperty)
	{
		TypeOut.PinCategory = TEXT("bad_type");
		return false;
	}

	TypeOut.ContainerType = FEdGraphPinType::ToPinContainerType(ArrayProperty != nullptr, SetProperty != nullptr, MapProperty != nullptr);
	TypeOut.bIsReference = Property->HasAllPropertyFlags(CPF_OutParm | CPF_ReferenceParm);
	TypeOut.bIsConst = Property->HasAllPropertyFlags(CPF_ConstParm);
	TypeOut.bIsUObjectWrapper = TestProperty->HasAllPropertyFlags(CPF_UObjectWrapper);

	if (IsWildcardProperty(Property))
	{
		TypeOut.PinCategory = PC_Wildcard;
		if (MapProperty)
		{
			TypeOut.PinValueType.TerminalCategory = PC_Wildcard;
		}
	}
	else if (const FMulticastDelegateProperty* Multicast = CastField<FMulticastDelegateProperty>(TestProperty))
	{
		TypeOut.PinCategory = PC_MCDelegate;
		TypeOut.PinSubCategoryMemberReference = FSimpleMemberReference();
		if (UFunction* Signature = Multicast->SignatureFunction)
		{
			TypeOut.PinSubCategoryMemberReference.MemberParent = Signature->GetOuter();
			TypeOut.PinSubCategoryMemberReference.MemberName = Signature->GetFName();
		}
	}
	else if (const FDelegateProperty* Delegate = CastField<FDelegateProperty>(TestProperty))
	{
		TypeOut.PinCategory = PC_Delegate;
		TypeOut.PinSubCategoryMemberReference = FSimpleMemberReference();
		if (UFunction* Signature = Delegate->SignatureFunction)
		{
			TypeOut.PinSubCategoryMemberReference.MemberParent = Signature->GetOuter();
			TypeOut.PinSubCategoryMemberReference.MemberName = Signature->GetFName();
		}
	}
	else
	{
		UObject* SubCategoryObject = nullptr;
		bool bIsWeakPointer = false;
		const bool bOk = GetPropertyCategoryInfo(TestProperty, TypeOut.PinCategory, TypeOut.PinSubCategory, SubCategoryObject, bIsWeakPointer);
		TypeOut.bIsWeakPointer = bIsWeakPointer;
		TypeOut.PinSubCategoryObject = SubCategoryObject;
		if (!bOk)
		{
			return false;
		}
	}

	if (TypeOut.PinSubCategory == PSC_Bitmask)
	{
		const FString& EnumName = TestProperty->GetMetaData(FBlueprintMetadata::MD_BitmaskEnum);
		if (!EnumName.IsEmpty())
		{
			TypeOut.PinSubCategoryObject = UClass::TryFindTypeSlow<UEnum>(EnumName);
		}
	}
	return true;
}

FProperty* UEdGraphSchema_K2::CreatePropertyForPinType(FFieldVariant Scope, FName PropertyName, const FEdGraphPinType& PinType, EPropertyFlags PropertyFlags)
{
	const EObjectFlags Flags = RF_Public | RF_Transient;
	auto MakeTerminal = [&](FFieldVariant Owner, FName Name, FName Category, FName SubCategory, UObject* SubObject, bool bWeak) -> FProperty*
	{
		if (Category == PC_Boolean) { return new FBoolProperty(Owner, Name, Flags); }
		if (Category == PC_Int) { return new FIntProperty(Owner, Name, Flags); }
		if (Category == PC_Int64) { return new FInt64Property(Owner, Name, Flags); }
		if (Category == PC_Real) { return SubCategory == PC_Float ? static_cast<FProperty*>(new FFloatProperty(Owner, Name, Flags)) : new FDoubleProperty(Owner, Name, Flags); }
		if (Category == PC_Float) { return new FFloatProperty(Owner, Name, Flags); }
		if (Category == PC_Double) { return new FDoubleProperty(Owner, Name, Flags); }
		if (Category == PC_Name) { return new FNameProperty(Owner, Name, Flags); }
		if (Category == PC_String) { return new FStrProperty(Owner, Name, Flags); }
		if (Category == PC_Text) { return new FTextProperty(Owner, Name, Flags); }
		if (Category == PC_Byte || Category == PC_Enum)
		{
			FByteProperty* Byte = new FByteProperty(Owner, Name, Flags);
			Byte->Enum = Cast<UEnum>(SubObject);
			return Byte;
		}
		if (Category == PC_Struct)
		{
			UScriptStruct* Struct = Cast<UScriptStruct>(SubObject);
			if (!Struct)
			{
				return nullptr;
			}
			FStructProperty* StructProperty = new FStructProperty(Owner, Name, Flags);
			StructProperty->Struct = Struct;
			return StructProperty;
		}
		UClass* Class = Cast<UClass>(SubObject);
		if (Category == PC_Object)
		{
			if (!Class) { return nullptr; }
			FObjectPropertyBase* Object = bWeak ? static_cast<FObjectPropertyBase*>(new FWeakObjectProperty(Owner, Name, Flags)) : new FObjectProperty(Owner, Name, Flags);
			Object->SetPropertyClass(Class);
			return Object;
		}
		if (Category == PC_Class)
		{
			if (!Class) { return nullptr; }
			FClassProperty* ClassProperty = new FClassProperty(Owner, Name, Flags);
			ClassProperty->SetPropertyClass(UClass::StaticClass());
			ClassProperty->SetMetaClass(Class);
			return ClassProperty;
		}
		if (Category == PC_SoftObject)
		{
			if (!Class) { return nullptr; }
			FSoftObjectProperty* Soft = new FSoftObjectProperty(Owner, Name, Flags);
			Soft->SetPropertyClass(Class);
			return Soft;
		}
		if (Category == PC_SoftClass)
		{
			if (!Class) { return nullptr; }
			FSoftClassProperty* Soft = new FSoftClassProperty(Owner, Name, Flags);
			Soft->SetPropertyClass(UClass::StaticClass());
			Soft->SetMetaClass(Class);
			return Soft;
		}
		if (Category == PC_Interface)
		{
			if (!Class) { return nullptr; }
			FInterfaceProperty* Interface = new FInterfaceProperty(Owner, Name, Flags);
			Interface->SetInterfaceClass(Class);
			return Interface;
		}
		return nullptr;
	};

	FProperty* Result = nullptr;
	if (PinType.PinCategory == PC_Delegate || PinType.PinCategory == PC_MCDelegate)
	{
		UFunction* Signature = const_cast<UFunction*>(ResolveSignature(PinType.PinSubCategoryMemberReference));
		if (!Signature || PinType.IsContainer())
		{
			return nullptr;
		}
		if (PinType.PinCategory == PC_Delegate)
		{
			FDelegateProperty* Delegate = new FDelegateProperty(Scope, PropertyName, Flags);
			Delegate->SignatureFunction = Signature;
			Result = Delegate;
		}
		else
		{
			FMulticastInlineDelegateProperty* Delegate = new FMulticastInlineDelegateProperty(Scope, PropertyName, Flags);
			Delegate->SignatureFunction = Signature;
			Result = Delegate;
		}
	}
	else if (PinType.IsArray())
	{
		FArrayProperty* Array = new FArrayProperty(Scope, PropertyName, Flags);
		FProperty* Inner = MakeTerminal(Array, PropertyName, PinType.PinCategory, PinType.PinSubCategory, PinType.PinSubCategoryObject.Get(), PinType.bIsWeakPointer);
		if (!Inner)
		{
			delete Array;
			return nullptr;
		}
		Array->AddCppProperty(Inner);
		Result = Array;
	}
	else if (PinType.IsSet())
	{
		FSetProperty* Set = new FSetProperty(Scope, PropertyName, Flags);
		FProperty* Element = MakeTerminal(Set, PropertyName, PinType.PinCategory, PinType.PinSubCategory, PinType.PinSubCategoryObject.Get(), PinType.bIsWeakPointer);
		if (!Element)
		{
			delete Set;
			return nullptr;
		}
		Set->AddCppProperty(Element);
		Result = Set;
	}
	else if (PinType.IsMap())
	{
		FMapProperty* Map = new FMapProperty(Scope, PropertyName, Flags);
		FProperty* Key = MakeTerminal(Map, FName(*(PropertyName.ToString() + TEXT("_Key"))), PinType.PinCategory, PinType.PinSubCategory, PinType.PinSubCategoryObject.Get(), PinType.bIsWeakPointer);
		FProperty* Value = MakeTerminal(Map, PropertyName, PinType.PinValueType.TerminalCategory, PinType.PinValueType.TerminalSubCategory,
			PinType.PinValueType.TerminalSubCategoryObject.Get(), PinType.PinValueType.bTerminalIsWeakPointer);
		if (!Key || !Value)
		{
			delete Key;
			delete Value;
			delete Map;
			return nullptr;
		}
		Map->AddCppProperty(Key);
		Map->AddCppProperty(Value);
		Result = Map;
	}
	else
	{
		Result = MakeTerminal(Scope, PropertyName, PinType.PinCategory, PinType.PinSubCategory, PinType.PinSubCategoryObject.Get(), PinType.bIsWeakPointer);
	}

	if (Result)
	{
		Result->SetPropertyFlags(PropertyFlags);
		if (PinType.PinSubCategory == PSC_Bitmask)
		{
			Result->SetMetaData(FBlueprintMetadata::MD_Bitmask, TEXT(""));
			if (const UEnum* BitmaskEnum = Cast<UEnum>(PinType.PinSubCategoryObject.Get()))
			{
				Result->SetMetaData(FBlueprintMetadata::MD_BitmaskEnum, *BitmaskEnum->GetPathName());
			}
		}
	}
	return Result;
}

//////////////////////////////////////////////////////////////////////////
// Functions

bool UEdGraphSchema_K2::CanUserKismetCallFunction(const UFunction* Function)
{
	return Function
		&& Function->HasAllFunctionFlags(FUNC_BlueprintCallable)
		&& !Function->HasAllFunctionFlags(FUNC_Delegate)
		&& !Function->GetBoolMetaData(FBlueprintMetadata::MD_BlueprintInternalUseOnly)
		&& !Function->HasMetaData(FBlueprintMetadata::MD_DeprecatedFunction);
}

bool UEdGraphSchema_K2::CanKismetOverrideFunction(const UFunction* Function)
{
	return Function
		&& Function->HasAllFunctionFlags(FUNC_BlueprintEvent)
		&& !Function->HasAllFunctionFlags(FUNC_Delegate)
		&& !Function->GetBoolMetaData(FBlueprintMetadata::MD_BlueprintInternalUseOnly)
		&& !Function->HasMetaData(FBlueprintMetadata::MD_DeprecatedFunction);
}

bool UEdGraphSchema_K2::HasFunctionAnyOutputParameter(const UFunction* Function)
{
	if (!Function)
	{
		return false;
	}
	for (TFieldIterator<FProperty> It(Function); It && It->HasAnyPropertyFlags(CPF_Parm); ++It)
	{
		if (It->HasAnyPropertyFlags(CPF_ReturnParm)
			|| (It->HasAnyPropertyFlags(CPF_OutParm) && !It->HasAnyPropertyFlags(CPF_ReferenceParm) && !It->HasAnyPropertyFlags(CPF_ConstParm)))
		{
			return true;
		}
	}
	return false;
}

namespace UE::BlueprintGraph::Private
{
	/**
	 * Thread safety as the Blueprint editor reads it: a native function is thread safe when it says so, or when its
	 * class says so and the function does not opt out; a script function only by its own metadata.
	 */
	bool IsBlueprintThreadSafe(const UFunction* Function)
	{
		const bool bSaysSafe = Function->HasMetaData(FBlueprintMetadata::MD_ThreadSafe);
		if (!Function->HasAnyFunctionFlags(FUNC_Native))
		{
			return bSaysSafe;
		}
		const UClass* Owner = Function->GetOwnerClass();
		const bool bClassSaysSafe = Owner && Owner->HasMetaData(FBlueprintMetadata::MD_ThreadSafe);
		return bSaysSafe || (bClassSaysSafe && !Function->HasMetaData(FBlueprintMetadata::MD_NotThreadSafe));
	}
}

bool UEdGraphSchema_K2::FunctionCanBePlacedAsEvent(const UFunction* InFunction)
{
	// Overridable, non-static, non-const and not thread-safe.
	if (!InFunction || !CanKismetOverrideFunction(InFunction) || InFunction->HasAnyFunctionFlags(FUNC_Static | FUNC_Const)
		|| IsBlueprintThreadSafe(InFunction))
	{
		return false;
	}
	// ForceAsFunction keeps a function without outputs in the function list.
	if (InFunction->HasMetaData(FBlueprintMetadata::MD_ForceAsFunction))
	{
		return false;
	}
	// An event cannot hand values back.
	return !HasFunctionAnyOutputParameter(InFunction);
}

bool UEdGraphSchema_K2::FunctionCanBeUsedInDelegate(const UFunction* InFunction)
{
	// Latent functions cannot be bound: a delegate call cannot wait.
	return InFunction && CanUserKismetCallFunction(InFunction) && !InFunction->HasMetaData(FBlueprintMetadata::MD_Latent)
		&& !InFunction->HasAllFunctionFlags(FUNC_BlueprintPure);
}

void UEdGraphSchema_K2::AddExtraFunctionFlags(const UEdGraph* CurrentGraph, int32 ExtraFlags) const
{
	if (!CurrentGraph)
	{
		return;
	}
	// The flags live on the graph's entry node; the compiler adds them to the function it makes.
	for (UEdGraphNode* Node : CurrentGraph->Nodes)
	{
		if (UK2Node_FunctionEntry* Entry = Cast<UK2Node_FunctionEntry>(Node))
		{
			Entry->AddExtraFlags(ExtraFlags);
		}
	}
}

void UEdGraphSchema_K2::MarkFunctionEntryAsEditable(const UEdGraph* CurrentGraph, bool bNewEditable) const
{
	if (!CurrentGraph)
	{
		return;
	}
	// Entry and result nodes together: the user edits the signature on both or on neither.
	for (UEdGraphNode* Node : CurrentGraph->Nodes)
	{
		if (UK2Node_EditablePinBase* Editable = Cast<UK2Node_EditablePinBase>(Node))
		{
			if (Editable->IsA<UK2Node_FunctionEntry>() || Editable->IsA<UK2Node_FunctionResult>())
			{
				Editable->bIsEditable = bNewEditable;
			}
		}
	}
}

float UEdGraphSchema_K2::EstimateNodeHeight(UEdGraphNode* Node)
{
	if (!Node)
	{
		return 0.0f;
	}
	// Only calls and events grow with their pins; every other node gets the one-line height. The taller of the
	// two columns of visible pins decides, as the editor lays pins out side by side.
	float BaseHeight = 48.0f;
	float PinHeight = 0.0f;
	if (Node->IsA(UK2Node_CallFunction::StaticClass()))
	{
		BaseHeight = 80.0f;
		PinHeight = 18.0f;
	}
	else if (Node->IsA(UK2Node_Event::StaticClass()))
	{
		PinHeight = 16.0f;
	}
	if (PinHeight == 0.0f)
	{
		return BaseHeight;
	}
	int32 Inputs = 0;
	int32 Outputs = 0;
	for (const UEdGraphPin* Pin : Node->Pins)
	{
		if (Pin && !Pin->bHidden)
		{
			(Pin->Direction == EGPD_Input ? Inputs : Outputs)++;
		}
	}
	return BaseHeight + PinHeight * float(FMath::Max(Inputs, Outputs));
}

#undef LOCTEXT_NAMESPACE
