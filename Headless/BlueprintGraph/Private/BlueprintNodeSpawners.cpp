#include "BlueprintBoundEventNodeSpawner.h"
#include "BlueprintDelegateNodeSpawner.h"
#include "BlueprintEventNodeSpawner.h"
#include "BlueprintFieldNodeSpawner.h"
#include "BlueprintFunctionNodeSpawner.h"
#include "BlueprintVariableNodeSpawner.h"

#include "BlueprintActionFilter.h"
#include "BlueprintNodeStatics.h"
#include "BlueprintTypePromotion.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "K2Node_BaseMCDelegate.h"
#include "K2Node_CallFunction.h"
#include "Components/ActorComponent.h"
#include "Engine/SCS_Node.h"
#include "K2Node_CommutativeAssociativeBinaryOperator.h"
#include "K2Node_ComponentBoundEvent.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_Event.h"
#include "K2Node_FunctionEntry.h"
#include "K2Node_PromotableOperator.h"
#include "K2Node_Variable.h"
#include "K2Node_VariableSet.h"
#include "UObject/FieldIterator.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"

IMPLEMENT_CLASS(UBlueprintFieldNodeSpawner)
IMPLEMENT_CLASS(UBlueprintFunctionNodeSpawner)
IMPLEMENT_CLASS(UBlueprintVariableNodeSpawner)
IMPLEMENT_CLASS(UBlueprintEventNodeSpawner)
IMPLEMENT_CLASS(UBlueprintDelegateNodeSpawner)
IMPLEMENT_CLASS(UBlueprintBoundEventNodeSpawner)

namespace
{
	UObject* OuterOrTransient(UObject* Outer)
	{
		return Outer ? Outer : (UObject*)GetTransientPackage();
	}

	/** A class's name as menus show it: a Blueprint class by its Blueprint, a native one by its display name. */
	FText GetClassMenuName(UClass* Class)
	{
		if (!Class)
		{
			return FText();
		}
		if (const UBlueprint* Blueprint = UBlueprint::GetBlueprintFromClass(Class))
		{
			return FText::FromString(Blueprint->GetName());
		}
		return Class->GetDisplayNameText();
	}

	/** The category text a member's Category metadata gives, made readable level by level. */
	FString MakeReadableCategory(const FString& RawCategory)
	{
		TArray<FString> Levels;
		RawCategory.ParseIntoArray(Levels, TEXT("|"), true);
		FString Result;
		for (FString& Level : Levels)
		{
			Level.TrimStartAndEndInline();
			if (Level.IsEmpty())
			{
				continue;
			}
			if (!Result.IsEmpty())
			{
				Result += TEXT("|");
			}
			Result += FName::NameToDisplayString(Level, false);
		}
		return Result;
	}

	const FText& FallbackFunctionCategory()
	{
		static const FText Category = FText::FromString(TEXT("Call Function"));
		return Category;
	}
}

//------------------------------------------------------------------------------ field

UBlueprintFieldNodeSpawner* UBlueprintFieldNodeSpawner::Create(TSubclassOf<UEdGraphNode> InNodeClass, UField* InField, UObject* Outer)
{
	if (!InNodeClass.Get() || InNodeClass->HasAnyClassFlags(CLASS_Abstract))
	{
		return nullptr;
	}
	UBlueprintFieldNodeSpawner* Spawner = NewObject<UBlueprintFieldNodeSpawner>(OuterOrTransient(Outer));
	Spawner->NodeClass = InNodeClass;
	Spawner->SetField(InField);
	return Spawner;
}

UField* UBlueprintFieldNodeSpawner::GetField() const
{
	return Field.Get();
}

void UBlueprintFieldNodeSpawner::SetField(UField* InField)
{
	Field = InField;
}

UClass* UBlueprintFieldNodeSpawner::GetOwnerClass() const
{
	UField* TheField = Field.Get();
	if (!TheField)
	{
		return nullptr;
	}
	UClass* Owner = TheField->GetOwnerClass();
	return Owner ? UE::BlueprintGraph::Private::GetAuthoritativeClass(Owner) : nullptr;
}

UEdGraphNode* UBlueprintFieldNodeSpawner::Invoke(UEdGraph* ParentGraph, const FBindingSet& Bindings, const FVector2D Location) const
{
	UField* TheField = Field.Get();
	FSetNodeFieldDelegate SetField = SetNodeFieldDelegate;
	FCustomizeNodeDelegate User = CustomizeNodeDelegate;
	FCustomizeNodeDelegate PostSpawn = FCustomizeNodeDelegate::CreateLambda([TheField, SetField, User](UEdGraphNode* NewNode, bool bIsTemplate)
	{
		SetField.ExecuteIfBound(NewNode, TheField);
		User.ExecuteIfBound(NewNode, bIsTemplate);
	});
	return SpawnNode(NodeClass, ParentGraph, Bindings, Location, PostSpawn);
}

//------------------------------------------------------------------------------ function

namespace
{
	struct FOperatorInfo
	{
		const TCHAR* OpName;
		const TCHAR* MenuName;
		const TCHAR* Keywords;
	};

	/** The operators one promotable node stands for, with the words a search should find them by. */
	const FOperatorInfo GPromotableOperators[] = {
		{TEXT("Add"), TEXT("Add"), TEXT("+ add plus")},
		{TEXT("Subtract"), TEXT("Subtract"), TEXT("- subtract minus")},
		{TEXT("Multiply"), TEXT("Multiply"), TEXT("* multiply times")},
		{TEXT("Divide"), TEXT("Divide"), TEXT("/ divide division")},
		{TEXT("Greater"), TEXT("Greater"), TEXT("> greater than")},
		{TEXT("GreaterEqual"), TEXT("Greater Equal"), TEXT(">= greater than or equal")},
		{TEXT("Less"), TEXT("Less"), TEXT("< less than")},
		{TEXT("LessEqual"), TEXT("Less Equal"), TEXT("<= less than or equal")},
		{TEXT("EqualEqual"), TEXT("Equal"), TEXT("== equal")},
		{TEXT("NotEqual"), TEXT("Not Equal"), TEXT("!= not equal")},
	};

	const FOperatorInfo* FindOperator(FName OpName)
	{
		for (const FOperatorInfo& Info : GPromotableOperators)
		{
			if (OpName == FName(Info.OpName))
			{
				return &Info;
			}
		}
		return nullptr;
	}

	/** One spawner per operator, shared by every library function of that operator. */
	TMap<FName, TWeakObjectPtr<UBlueprintFunctionNodeSpawner>>& OperatorSpawners()
	{
		static TMap<FName, TWeakObjectPtr<UBlueprintFunctionNodeSpawner>> Spawners;
		return Spawners;
	}
}

bool UBlueprintFunctionNodeSpawner::IsPromotableOperatorFunction(const UFunction* Function)
{
	if (!Function || !Function->HasAnyFunctionFlags(FUNC_BlueprintPure) || Function->HasMetaData(FBlueprintMetadata::MD_IgnoreTypePromotion))
	{
		return false;
	}
	const UClass* Owner = Function->GetOwnerClass();
	if (!Owner || Owner->GetFName() != FName(TEXT("KismetMathLibrary")))
	{
		return false;
	}
	if (!FindOperator(FTypePromotion::GetOpNameFromFunction(Function)))
	{
		return false;
	}
	// Operators take two operands (comparisons of floats may add a tolerance) and give one result.
	int32 NumInputs = 0;
	bool bHasReturn = false;
	for (TFieldIterator<FProperty> It(Function); It; ++It)
	{
		if (It->HasAnyPropertyFlags(CPF_ReturnParm))
		{
			bHasReturn = true;
		}
		else if (It->HasAnyPropertyFlags(CPF_Parm) && (!It->HasAnyPropertyFlags(CPF_OutParm) || It->HasAnyPropertyFlags(CPF_ReferenceParm)))
		{
			// Operands passed by const reference count as inputs too.
			++NumInputs;
		}
	}
	return bHasReturn && (NumInputs == 2 || (NumInputs == 3 && FTypePromotion::IsComparisonFunc(Function)));
}

FText UBlueprintFunctionNodeSpawner::GetUserFacingOperatorName(FName OpName)
{
	const FOperatorInfo* Info = FindOperator(OpName);
	return Info ? FText::FromString(Info->MenuName) : FText::FromName(OpName);
}

UBlueprintFunctionNodeSpawner* UBlueprintFunctionNodeSpawner::Create(const UFunction* Function, UObject* Outer)
{
	if (!Function)
	{
		return nullptr;
	}
	TSubclassOf<UK2Node_CallFunction> Class = UK2Node_CallFunction::StaticClass();
	if (IsPromotableOperatorFunction(Function))
	{
		Class = UK2Node_PromotableOperator::StaticClass();
	}
	else if (Function->HasMetaData(FBlueprintMetadata::MD_CommutativeAssociativeBinaryOperator) && Function->HasAnyFunctionFlags(FUNC_BlueprintPure))
	{
		Class = UK2Node_CommutativeAssociativeBinaryOperator::StaticClass();
	}
	return Create(Class, Function, Outer);
}

UBlueprintFunctionNodeSpawner* UBlueprintFunctionNodeSpawner::Create(TSubclassOf<UK2Node_CallFunction> InNodeClass, const UFunction* Function, UObject* Outer)
{
	if (!Function)
	{
		return nullptr;
	}
	const bool bIsPromotable = InNodeClass.Get() && InNodeClass->IsChildOf(UK2Node_PromotableOperator::StaticClass()) && IsPromotableOperatorFunction(Function);
	const FName OpName = bIsPromotable ? FTypePromotion::GetOpNameFromFunction(Function) : NAME_None;
	if (bIsPromotable)
	{
		if (TWeakObjectPtr<UBlueprintFunctionNodeSpawner>* Existing = OperatorSpawners().Find(OpName))
		{
			if (UBlueprintFunctionNodeSpawner* Shared = Existing->Get())
			{
				return Shared;
			}
		}
	}

	UBlueprintFunctionNodeSpawner* Spawner = NewObject<UBlueprintFunctionNodeSpawner>(OuterOrTransient(Outer));
	Spawner->SetField(const_cast<UFunction*>(Function));
	Spawner->NodeClass = InNodeClass.Get() ? InNodeClass.Get() : UK2Node_CallFunction::StaticClass();

	FBlueprintActionUiSpec& Spec = Spawner->DefaultMenuSignature;
	if (bIsPromotable)
	{
		const FOperatorInfo* Info = FindOperator(OpName);
		Spec.MenuName = FText::FromString(Info->MenuName);
		Spec.Category = FText::FromString(TEXT("Utilities|Operators"));
		Spec.Tooltip = Spec.MenuName;
		Spec.Keywords = FText::FromString(Info->Keywords);
		OperatorSpawners().Add(OpName, Spawner);
	}
	else
	{
		Spec.MenuName = UK2Node_CallFunction::GetUserFacingFunctionName(Function, ENodeTitleType::MenuTitle);
		Spec.Category = UK2Node_CallFunction::GetDefaultCategoryForFunction(Function, FText::GetEmpty());
		Spec.Tooltip = FText::FromString(UK2Node_CallFunction::GetDefaultTooltipForFunction(Function));
		Spec.Keywords = UK2Node_CallFunction::GetKeywordsForFunction(Function);
	}
	// A blank rather than nothing, so the template node is never consulted for what the function already says.
	if (Spec.Keywords.IsEmpty())
	{
		Spec.Keywords = FText::FromString(TEXT(" "));
	}
	if (Spec.Category.IsEmpty())
	{
		Spec.Category = FallbackFunctionCategory();
	}
	if (Spec.Tooltip.IsEmpty())
	{
		Spec.Tooltip = Spec.MenuName;
	}

	Spawner->SetNodeFieldDelegate = FSetNodeFieldDelegate::CreateLambda([](UEdGraphNode* NewNode, UField* InField)
	{
		if (UK2Node_CallFunction* CallNode = Cast<UK2Node_CallFunction>(NewNode))
		{
			if (const UFunction* TheFunction = Cast<UFunction>(InField))
			{
				CallNode->SetFromFunction(TheFunction);
			}
		}
	});
	return Spawner;
}

const UFunction* UBlueprintFunctionNodeSpawner::GetFunction() const
{
	return Cast<UFunction>(GetField());
}

FBlueprintActionUiSpec UBlueprintFunctionNodeSpawner::GetUiSpec(const FBlueprintActionContext& Context, const FBindingSet& Bindings) const
{
	FBlueprintActionUiSpec Spec = PrimeDefaultUiSpec();
	const UFunction* Function = GetFunction();
	if (!Function || !Spec.Category.EqualTo(FallbackFunctionCategory()))
	{
		return Spec;
	}
	// A function without a category sits under "Call Function" when the Blueprint can call it on itself, and
	// under its class otherwise, which keeps the root of the menu small.
	UClass* FunctionClass = GetOwnerClass();
	UClass* TargetClass = Context.Blueprints.Num() > 0 ? FBlueprintActionFilter::GetBlueprintClass(Context.Blueprints[0]) : nullptr;
	if (FunctionClass && (!TargetClass || !TargetClass->IsChildOf(FunctionClass)))
	{
		Spec.Category = FText::FromString(FString::Printf(TEXT("Class|%s"), *GetClassMenuName(FunctionClass).ToString()));
	}
	return Spec;
}

UEdGraphNode* UBlueprintFunctionNodeSpawner::Invoke(UEdGraph* ParentGraph, const FBindingSet& Bindings, const FVector2D Location) const
{
	if (!GetFunction())
	{
		// The function went away with its Blueprint or class; there is nothing to call.
		return nullptr;
	}
	return UBlueprintFieldNodeSpawner::Invoke(ParentGraph, Bindings, Location);
}

//------------------------------------------------------------------------------ variable

namespace
{
	FText VariableCategoryText(const FString& RawCategory)
	{
		const FString Readable = MakeReadableCategory(RawCategory);
		return FText::FromString(Readable.IsEmpty() ? FString(TEXT("Variables")) : FString::Printf(TEXT("Variables|%s"), *Readable));
	}

	void FillVariableSpec(FBlueprintActionUiSpec& Spec, bool bSetter, const FString& DisplayName, const FString& RawCategory, const FString& Tooltip)
	{
		Spec.MenuName = FText::FromString(FString(bSetter ? TEXT("Set ") : TEXT("Get ")) + DisplayName);
		Spec.Category = VariableCategoryText(RawCategory);
		Spec.Tooltip = FText::FromString(Tooltip.IsEmpty() ? DisplayName : Tooltip);
		Spec.Keywords = FText::FromString(TEXT(" "));
	}
}

UBlueprintVariableNodeSpawner* UBlueprintVariableNodeSpawner::CreateFromMemberOrParam(TSubclassOf<UK2Node_Variable> InNodeClass, const FProperty* VarProperty, UEdGraph* VarContext, UClass* OwnerClass, UObject* Outer)
{
	if (!VarProperty || !InNodeClass.Get() || InNodeClass->HasAnyClassFlags(CLASS_Abstract))
	{
		return nullptr;
	}
	UClass* Owner = OwnerClass ? OwnerClass : VarProperty->GetOwnerClass();
	if (!Owner)
	{
		return nullptr;
	}
	UBlueprintVariableNodeSpawner* Spawner = NewObject<UBlueprintVariableNodeSpawner>(OuterOrTransient(Outer));
	Spawner->NodeClass = InNodeClass.Get();
	Spawner->VarOwnerClass = UE::BlueprintGraph::Private::GetAuthoritativeClass(Owner);
	Spawner->VarName = VarProperty->GetFName();
	FName SubCategory;
	UObject* SubObject = nullptr;
	bool bWeak = false;
	FName Category;
	if (UEdGraphSchema_K2::GetPropertyCategoryInfo(VarProperty, Category, SubCategory, SubObject, bWeak))
	{
		Spawner->VarType.PinCategory = Category;
		Spawner->VarType.PinSubCategory = SubCategory;
		Spawner->VarType.PinSubCategoryObject = SubObject;
	}

	const bool bIsBool = CastField<FBoolProperty>(VarProperty) != nullptr;
	FString DisplayName = VarProperty->GetMetaData(TEXT("DisplayName"));
	if (DisplayName.IsEmpty())
	{
		DisplayName = FName::NameToDisplayString(VarProperty->GetName(), bIsBool);
	}
	FillVariableSpec(Spawner->DefaultMenuSignature, Spawner->IsSetter(), DisplayName, VarProperty->GetMetaData(TEXT("Category")), VarProperty->GetMetaData(TEXT("ToolTip")));
	return Spawner;
}

UBlueprintVariableNodeSpawner* UBlueprintVariableNodeSpawner::CreateFromBlueprintVariable(TSubclassOf<UK2Node_Variable> InNodeClass, UBlueprint* Blueprint, const FBPVariableDescription& VarDesc, UObject* Outer)
{
	if (!Blueprint || VarDesc.VarName.IsNone() || !InNodeClass.Get() || InNodeClass->HasAnyClassFlags(CLASS_Abstract))
	{
		return nullptr;
	}
	UBlueprintVariableNodeSpawner* Spawner = NewObject<UBlueprintVariableNodeSpawner>(OuterOrTransient(Outer));
	Spawner->NodeClass = InNodeClass.Get();
	Spawner->DeclaringBlueprint = Blueprint;
	Spawner->VarOwnerClass = Blueprint->GeneratedClass.Get() ? Blueprint->GeneratedClass.Get() : nullptr;
	Spawner->VarName = VarDesc.VarName;
	Spawner->VarGuid = VarDesc.VarGuid;
	Spawner->VarType = VarDesc.VarType;

	const bool bIsBool = VarDesc.VarType.PinCategory == UEdGraphSchema_K2::PC_Boolean;
	const FString DisplayName = VarDesc.FriendlyName.IsEmpty() ? FName::NameToDisplayString(VarDesc.VarName.ToString(), bIsBool) : VarDesc.FriendlyName;
	FillVariableSpec(Spawner->DefaultMenuSignature, Spawner->IsSetter(), DisplayName, VarDesc.Category.ToString(), VarDesc.GetMetaData(FBlueprintMetadata::MD_Tooltip));
	return Spawner;
}

bool UBlueprintVariableNodeSpawner::IsSetter() const
{
	return NodeClass.Get() && NodeClass->IsChildOf(UK2Node_VariableSet::StaticClass());
}

UClass* UBlueprintVariableNodeSpawner::GetOwnerClass() const
{
	if (UBlueprint* Blueprint = DeclaringBlueprint.Get())
	{
		return FBlueprintActionFilter::GetBlueprintClass(Blueprint);
	}
	return VarOwnerClass.Get();
}

FProperty* UBlueprintVariableNodeSpawner::GetVarProperty() const
{
	UClass* Owner = GetOwnerClass();
	return Owner ? Owner->FindPropertyByName(VarName) : nullptr;
}

UEdGraphNode* UBlueprintVariableNodeSpawner::Invoke(UEdGraph* ParentGraph, const FBindingSet& Bindings, const FVector2D Location) const
{
	if (!ParentGraph)
	{
		return nullptr;
	}
	FProperty* Property = GetVarProperty();
	UBlueprint* Declaring = DeclaringBlueprint.Get();
	if (!Property && !Declaring)
	{
		return nullptr;
	}
	const FName Name = VarName;
	const FGuid Guid = VarGuid;
	UClass* Owner = GetOwnerClass();
	FCustomizeNodeDelegate User = CustomizeNodeDelegate;
	FCustomizeNodeDelegate PostSpawn = FCustomizeNodeDelegate::CreateLambda([Property, Declaring, Name, Guid, Owner, ParentGraph, User](UEdGraphNode* NewNode, bool bIsTemplate)
	{
		UK2Node_Variable* VarNode = Cast<UK2Node_Variable>(NewNode);
		if (VarNode)
		{
			UBlueprint* GraphBlueprint = UE::BlueprintGraph::Private::FindBlueprintFor(ParentGraph);
			UClass* GraphClass = GraphBlueprint ? FBlueprintActionFilter::GetBlueprintClass(GraphBlueprint) : nullptr;
			const bool bSelfContext = GraphClass && Owner && (GraphClass->IsChildOf(Owner) || UE::BlueprintGraph::Private::GetAuthoritativeClass(GraphClass)->IsChildOf(Owner));
			if (Declaring && (!Property || bSelfContext))
			{
				// The Blueprint's own variable: by name and guid, as the compiler will resolve it.
				FGuid MemberGuid = Guid;
				VarNode->VariableReference.SetSelfMember(Name, MemberGuid);
			}
			else if (Property)
			{
				VarNode->SetFromProperty(Property, bSelfContext, Owner);
			}
		}
		User.ExecuteIfBound(NewNode, bIsTemplate);
	});
	return SpawnNode(NodeClass, ParentGraph, Bindings, Location, PostSpawn);
}

//------------------------------------------------------------------------------ event

UBlueprintEventNodeSpawner* UBlueprintEventNodeSpawner::Create(const UFunction* InEventFunc, UObject* Outer)
{
	if (!InEventFunc)
	{
		return nullptr;
	}
	UBlueprintEventNodeSpawner* Spawner = NewObject<UBlueprintEventNodeSpawner>(OuterOrTransient(Outer));
	Spawner->EventFunc = const_cast<UFunction*>(InEventFunc);
	Spawner->bHadEventFunc = true;
	Spawner->NodeClass = UK2Node_Event::StaticClass();

	FBlueprintActionUiSpec& Spec = Spawner->DefaultMenuSignature;
	const FText FunctionName = UK2Node_CallFunction::GetUserFacingFunctionName(InEventFunc, ENodeTitleType::MenuTitle);
	Spec.MenuName = FText::FromString(FString::Printf(TEXT("Event %s"), *FunctionName.ToString()));
	Spec.Category = UK2Node_CallFunction::GetDefaultCategoryForFunction(InEventFunc, FText::FromString(TEXT("Add Event")));
	Spec.Tooltip = FText::FromString(UK2Node_CallFunction::GetDefaultTooltipForFunction(InEventFunc));
	Spec.Keywords = UK2Node_CallFunction::GetKeywordsForFunction(InEventFunc);
	if (Spec.Keywords.IsEmpty())
	{
		Spec.Keywords = FText::FromString(TEXT(" "));
	}
	if (Spec.Tooltip.IsEmpty())
	{
		Spec.Tooltip = Spec.MenuName;
	}
	return Spawner;
}

UBlueprintEventNodeSpawner* UBlueprintEventNodeSpawner::Create(TSubclassOf<UK2Node_Event> InNodeClass, FName InCustomEventName, UObject* Outer)
{
	if (!InNodeClass.Get() || InNodeClass->HasAnyClassFlags(CLASS_Abstract))
	{
		return nullptr;
	}
	UBlueprintEventNodeSpawner* Spawner = NewObject<UBlueprintEventNodeSpawner>(OuterOrTransient(Outer));
	Spawner->NodeClass = InNodeClass.Get();
	Spawner->CustomEventName = InCustomEventName;
	Spawner->DefaultMenuSignature.MenuName = InCustomEventName.IsNone()
		? FText::FromString(TEXT("Add Custom Event..."))
		: FText::FromString(FString::Printf(TEXT("Event %s"), *InCustomEventName.ToString()));
	// Events of every kind sit together in the menu.
	Spawner->DefaultMenuSignature.Category = FText::FromString(TEXT("Add Event"));
	return Spawner;
}

const UFunction* UBlueprintEventNodeSpawner::GetEventFunction() const
{
	return EventFunc.Get();
}

UK2Node_Event* UBlueprintEventNodeSpawner::FindPreExistingEvent(UBlueprint* Blueprint, const FBindingSet& Bindings) const
{
	if (!Blueprint)
	{
		return nullptr;
	}
	const UFunction* Function = EventFunc.Get();
	if (!Function && CustomEventName.IsNone())
	{
		// A fresh custom event never matches an existing one.
		return nullptr;
	}
	TArray<UEdGraph*> Graphs;
	Blueprint->GetAllGraphs(Graphs);
	for (UEdGraph* Graph : Graphs)
	{
		for (UEdGraphNode* Node : Graph->Nodes)
		{
			UK2Node_Event* Event = Cast<UK2Node_Event>(Node);
			if (!Event)
			{
				continue;
			}
			if (Function)
			{
				if (Event->bOverrideFunction && Event->EventReference.GetMemberName() == Function->GetFName())
				{
					return Event;
				}
			}
			else if (Cast<UK2Node_CustomEvent>(Event) && Event->CustomFunctionName == CustomEventName)
			{
				return Event;
			}
		}
	}
	return nullptr;
}

namespace
{
	/** A custom event name nothing in the Blueprint uses yet: "CustomEvent", then "CustomEvent_0", "CustomEvent_1"... */
	FName FindUniqueCustomEventName(UBlueprint* Blueprint)
	{
		TSet<FName> Taken;
		if (Blueprint)
		{
			TArray<UEdGraph*> Graphs;
			Blueprint->GetAllGraphs(Graphs);
			for (UEdGraph* Graph : Graphs)
			{
				Taken.Add(Graph->GetFName());
				for (UEdGraphNode* Node : Graph->Nodes)
				{
					if (const UK2Node_Event* Event = Cast<UK2Node_Event>(Node))
					{
						Taken.Add(Event->GetFunctionName());
					}
				}
			}
			for (const FBPVariableDescription& Var : Blueprint->NewVariables)
			{
				Taken.Add(Var.VarName);
			}
			if (UClass* Class = FBlueprintActionFilter::GetBlueprintClass(Blueprint))
			{
				for (TFieldIterator<UFunction> It(Class); It; ++It)
				{
					Taken.Add(It->GetFName());
				}
			}
		}
		const FName Base(TEXT("CustomEvent"));
		if (!Taken.Contains(Base))
		{
			return Base;
		}
		for (int32 Index = 0;; ++Index)
		{
			const FName Candidate(*FString::Printf(TEXT("CustomEvent_%d"), Index));
			if (!Taken.Contains(Candidate))
			{
				return Candidate;
			}
		}
	}
}

UEdGraphNode* UBlueprintEventNodeSpawner::Invoke(UEdGraph* ParentGraph, const FBindingSet& Bindings, const FVector2D Location) const
{
	if (!ParentGraph)
	{
		return nullptr;
	}
	const UFunction* Function = EventFunc.Get();
	if (bHadEventFunc && !Function)
	{
		return nullptr;
	}
	const bool bIsTemplate = IsTemplateOuter(ParentGraph);
	UBlueprint* Blueprint = UE::BlueprintGraph::Private::FindBlueprintFor(ParentGraph);
	if (!bIsTemplate)
	{
		if (!Blueprint)
		{
			// Events belong to a Blueprint's class; a graph outside every Blueprint cannot hold one.
			return nullptr;
		}
		if (UK2Node_Event* Existing = FindPreExistingEvent(Blueprint, Bindings))
		{
			return Existing;
		}
		// A function graph of the same name stands for the event already: hand back its entry.
		const FName EventName = Function ? Function->GetFName() : CustomEventName;
		for (UEdGraph* FunctionGraph : Blueprint->FunctionGraphs)
		{
			if (FunctionGraph && FunctionGraph->GetFName() == EventName)
			{
				TArray<UK2Node_FunctionEntry*> Entries;
				FunctionGraph->GetNodesOfClass(Entries);
				return Entries.Num() > 0 ? Entries[0] : nullptr;
			}
		}
	}

	FName NewCustomName = CustomEventName;
	if (!Function && NewCustomName.IsNone() && !bIsTemplate)
	{
		NewCustomName = FindUniqueCustomEventName(Blueprint);
	}
	FCustomizeNodeDelegate User = CustomizeNodeDelegate;
	FCustomizeNodeDelegate PostSpawn = FCustomizeNodeDelegate::CreateLambda([Function, NewCustomName, User](UEdGraphNode* NewNode, bool bTemplate)
	{
		if (UK2Node_Event* Event = Cast<UK2Node_Event>(NewNode))
		{
			if (Function)
			{
				UClass* Owner = UE::BlueprintGraph::Private::GetAuthoritativeClass(Function->GetOwnerClass());
				Event->EventReference.SetExternalMember(Function->GetFName(), Owner);
				Event->bOverrideFunction = true;
			}
			else if (!bTemplate)
			{
				Event->CustomFunctionName = NewCustomName;
			}
		}
		User.ExecuteIfBound(NewNode, bTemplate);
	});
	return SpawnNode(NodeClass, ParentGraph, Bindings, Location, PostSpawn);
}

//------------------------------------------------------------------------------ delegate

UBlueprintDelegateNodeSpawner* UBlueprintDelegateNodeSpawner::Create(TSubclassOf<UK2Node_BaseMCDelegate> InNodeClass, const FMulticastDelegateProperty* Property, UObject* Outer)
{
	if (!Property || !InNodeClass.Get() || InNodeClass->HasAnyClassFlags(CLASS_Abstract) || !Property->GetOwnerClass())
	{
		return nullptr;
	}
	UBlueprintDelegateNodeSpawner* Spawner = NewObject<UBlueprintDelegateNodeSpawner>(OuterOrTransient(Outer));
	Spawner->NodeClass = InNodeClass.Get();
	Spawner->DelegateOwnerClass = UE::BlueprintGraph::Private::GetAuthoritativeClass(Property->GetOwnerClass());
	Spawner->DelegateName = Property->GetFName();

	FString DisplayName = Property->GetMetaData(TEXT("DisplayName"));
	if (DisplayName.IsEmpty())
	{
		DisplayName = FName::NameToDisplayString(Property->GetName(), false);
	}
	const FString Category = MakeReadableCategory(Property->GetMetaData(TEXT("Category")));
	FBlueprintActionUiSpec& Spec = Spawner->DefaultMenuSignature;
	const FString ClassName = Spawner->NodeClass->GetName();
	FString Prefix;
	if (ClassName == TEXT("K2Node_AddDelegate"))
	{
		Prefix = TEXT("Bind Event to ");
	}
	else if (ClassName == TEXT("K2Node_RemoveDelegate"))
	{
		Prefix = TEXT("Unbind Event from ");
	}
	else if (ClassName == TEXT("K2Node_ClearDelegate"))
	{
		Prefix = TEXT("Unbind all Events from ");
	}
	else if (ClassName == TEXT("K2Node_CallDelegate"))
	{
		Prefix = TEXT("Call ");
	}
	else if (ClassName == TEXT("K2Node_AssignDelegate"))
	{
		Prefix = TEXT("Assign ");
	}
	Spec.MenuName = FText::FromString(Prefix + DisplayName);
	Spec.Category = FText::FromString(Category.IsEmpty() ? FString(TEXT("Event Dispatchers")) : FString::Printf(TEXT("Event Dispatchers|%s"), *Category));
	Spec.Tooltip = FText::FromString(Property->GetMetaData(TEXT("ToolTip")).IsEmpty() ? DisplayName : Property->GetMetaData(TEXT("ToolTip")));
	Spec.Keywords = FText::FromString(TEXT(" "));
	return Spawner;
}

UClass* UBlueprintDelegateNodeSpawner::GetOwnerClass() const
{
	return DelegateOwnerClass.Get();
}

FMulticastDelegateProperty* UBlueprintDelegateNodeSpawner::GetDelegateProperty() const
{
	UClass* Owner = DelegateOwnerClass.Get();
	if (!Owner)
	{
		return nullptr;
	}
	// A Blueprint's dispatchers live on its skeleton class while it is being edited.
	if (const UBlueprint* Blueprint = UBlueprint::GetBlueprintFromClass(Owner))
	{
		if (UClass* Skeleton = Blueprint->SkeletonGeneratedClass.Get())
		{
			if (FMulticastDelegateProperty* Found = CastField<FMulticastDelegateProperty>(Skeleton->FindPropertyByName(DelegateName)))
			{
				return Found;
			}
		}
	}
	return CastField<FMulticastDelegateProperty>(Owner->FindPropertyByName(DelegateName));
}

UEdGraphNode* UBlueprintDelegateNodeSpawner::Invoke(UEdGraph* ParentGraph, const FBindingSet& Bindings, const FVector2D Location) const
{
	FMulticastDelegateProperty* Property = GetDelegateProperty();
	if (!ParentGraph || !Property)
	{
		return nullptr;
	}
	UClass* Owner = DelegateOwnerClass.Get();
	FCustomizeNodeDelegate User = CustomizeNodeDelegate;
	FCustomizeNodeDelegate PostSpawn = FCustomizeNodeDelegate::CreateLambda([Property, Owner, ParentGraph, User](UEdGraphNode* NewNode, bool bIsTemplate)
	{
		if (UK2Node_BaseMCDelegate* DelegateNode = Cast<UK2Node_BaseMCDelegate>(NewNode))
		{
			UBlueprint* GraphBlueprint = UE::BlueprintGraph::Private::FindBlueprintFor(ParentGraph);
			UClass* GraphClass = GraphBlueprint ? FBlueprintActionFilter::GetBlueprintClass(GraphBlueprint) : nullptr;
			const bool bSelfContext = GraphClass && Owner && (GraphClass->IsChildOf(Owner) || UE::BlueprintGraph::Private::GetAuthoritativeClass(GraphClass)->IsChildOf(Owner));
			DelegateNode->SetFromProperty(Property, bSelfContext, Owner);
		}
		User.ExecuteIfBound(NewNode, bIsTemplate);
	});
	return SpawnNode(NodeClass, ParentGraph, Bindings, Location, PostSpawn);
}

//------------------------------------------------------------------------------ bound event

UBlueprintBoundEventNodeSpawner* UBlueprintBoundEventNodeSpawner::Create(TSubclassOf<UK2Node_Event> InNodeClass, FMulticastDelegateProperty* EventDelegate, UObject* Outer)
{
	if (!EventDelegate || !EventDelegate->GetOwnerClass() || !InNodeClass.Get() || InNodeClass->HasAnyClassFlags(CLASS_Abstract))
	{
		return nullptr;
	}
	UBlueprintBoundEventNodeSpawner* Spawner = NewObject<UBlueprintBoundEventNodeSpawner>(OuterOrTransient(Outer));
	Spawner->NodeClass = InNodeClass.Get();
	Spawner->DelegateOwnerClass = UE::BlueprintGraph::Private::GetAuthoritativeClass(EventDelegate->GetOwnerClass());
	Spawner->DelegateName = EventDelegate->GetFName();

	FString DisplayName = EventDelegate->GetMetaData(TEXT("DisplayName"));
	if (DisplayName.IsEmpty())
	{
		DisplayName = FName::NameToDisplayString(EventDelegate->GetName(), false);
	}
	const FString Category = MakeReadableCategory(EventDelegate->GetMetaData(TEXT("Category")));
	const FString Tooltip = EventDelegate->GetMetaData(TEXT("ToolTip"));
	FBlueprintActionUiSpec& Spec = Spawner->DefaultMenuSignature;
	Spec.MenuName = FText::FromString(FString::Printf(TEXT("Add %s"), *DisplayName));
	Spec.Category = FText::FromString(Category.IsEmpty() ? FString(TEXT("Event Dispatchers")) : Category);
	Spec.Tooltip = FText::FromString(Tooltip.IsEmpty() ? DisplayName : Tooltip);
	Spec.Keywords = FText::FromString(TEXT(" "));
	return Spawner;
}

FMulticastDelegateProperty* UBlueprintBoundEventNodeSpawner::GetEventDelegate() const
{
	UClass* Owner = DelegateOwnerClass.Get();
	return Owner ? CastField<FMulticastDelegateProperty>(Owner->FindPropertyByName(DelegateName)) : nullptr;
}

bool UBlueprintBoundEventNodeSpawner::ResolveComponentBinding(const UObject* Binding, FName& OutVariableName, UClass*& OutComponentClass)
{
	if (const USCS_Node* SCSNode = Cast<USCS_Node>(Binding))
	{
		OutVariableName = SCSNode->GetVariableName();
		OutComponentClass = SCSNode->ComponentClass.Get();
		return !OutVariableName.IsNone() && OutComponentClass;
	}
	// A component the parent class makes: named by the property of its owner's class that holds it.
	const UActorComponent* Template = Cast<UActorComponent>(Binding);
	const UObject* Owner = Template ? Template->GetOuter() : nullptr;
	if (!Owner)
	{
		return false;
	}
	for (TFieldIterator<FObjectPropertyBase> It(Owner->GetClass()); It; ++It)
	{
		if (It->GetObjectPropertyValue_InContainer(Owner) == Template)
		{
			OutVariableName = It->GetFName();
			OutComponentClass = Template->GetClass();
			return true;
		}
	}
	return false;
}

bool UBlueprintBoundEventNodeSpawner::IsBindingCompatible(const UObject* Binding) const
{
	FName VariableName;
	UClass* ComponentClass = nullptr;
	UClass* Owner = DelegateOwnerClass.Get();
	return Owner && GetEventDelegate() && ResolveComponentBinding(Binding, VariableName, ComponentClass)
		&& UE::BlueprintGraph::Private::GetAuthoritativeClass(ComponentClass)->IsChildOf(Owner);
}

UK2Node_Event* UBlueprintBoundEventNodeSpawner::FindPreExistingEvent(UBlueprint* Blueprint, const FBindingSet& Bindings) const
{
	FName VariableName;
	UClass* ComponentClass = nullptr;
	if (!Blueprint || Bindings.Num() == 0 || !ResolveComponentBinding(*Bindings.CreateConstIterator(), VariableName, ComponentClass))
	{
		return nullptr;
	}
	TArray<UEdGraph*> Graphs;
	Blueprint->GetAllGraphs(Graphs);
	for (UEdGraph* Graph : Graphs)
	{
		for (UEdGraphNode* Node : Graph->Nodes)
		{
			UK2Node_ComponentBoundEvent* Bound = Cast<UK2Node_ComponentBoundEvent>(Node);
			if (Bound && Bound->ComponentPropertyName == VariableName && Bound->DelegatePropertyName == DelegateName)
			{
				return Bound;
			}
		}
	}
	return nullptr;
}

UEdGraphNode* UBlueprintBoundEventNodeSpawner::Invoke(UEdGraph* ParentGraph, const FBindingSet& Bindings, const FVector2D Location) const
{
	FMulticastDelegateProperty* Delegate = GetEventDelegate();
	FName VariableName;
	UClass* ComponentClass = nullptr;
	// Unbound, there is no component to listen to: the menu never offers it so, and a template is not needed.
	if (!ParentGraph || !Delegate || Bindings.Num() == 0 || !ResolveComponentBinding(*Bindings.CreateConstIterator(), VariableName, ComponentClass))
	{
		return nullptr;
	}
	// A component's delegate is bound once per Blueprint; asking again gives the existing event.
	if (UK2Node_Event* Existing = FindPreExistingEvent(UE::BlueprintGraph::Private::FindBlueprintFor(ParentGraph), Bindings))
	{
		return Existing;
	}
	FCustomizeNodeDelegate User = CustomizeNodeDelegate;
	FCustomizeNodeDelegate PostSpawn = FCustomizeNodeDelegate::CreateLambda([Delegate, VariableName, User](UEdGraphNode* NewNode, bool bIsTemplate)
	{
		if (UK2Node_ComponentBoundEvent* Bound = Cast<UK2Node_ComponentBoundEvent>(NewNode))
		{
			Bound->InitializeComponentBoundEventParams(VariableName, Delegate);
		}
		User.ExecuteIfBound(NewNode, bIsTemplate);
	});
	return SpawnNode(NodeClass, ParentGraph, Bindings, Location, PostSpawn);
}
