#include "Populate/SpawnValidation.h"

#include "AnimStateNode.h"
#include "Blueprint/WidgetTree.h"
#include "Components/Widget.h"
#include "Dom/JsonObject.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "K2Node_CallFunction.h"
#include "K2Node_CreateDelegate.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_DynamicCast.h"
#include "K2Node_Event.h"
#include "K2Node_FunctionEntry.h"
#include "K2Node_FunctionResult.h"
#include "K2Node_VariableGet.h"
#include "K2Node_VariableSet.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Populate/ContextActionMenu.h"
#include "Populate/GraphModificationRecords.h"
#include "Populate/PopulateTelemetry.h"
#include "ToolResult.h"
#include "UObject/FieldIterator.h"
#include "WidgetBlueprint.h"

namespace
{
	/** Whether the node's class, or one of its parents, has that name. Lets a check reach a node kind by name alone. */
	bool IsNodeOfClassNamed(const UEdGraphNode* Node, const TCHAR* ClassName)
	{
		for (const UClass* Class = Node ? Node->GetClass() : nullptr; Class; Class = Class->GetSuperClass())
		{
			if (Class->GetName().Equals(ClassName, ESearchCase::CaseSensitive))
			{
				return true;
			}
		}
		return false;
	}

	/** Takes a refused node out of the graph; nothing of it may remain to be saved. */
	void RemoveRefusedNode(UEdGraph* Graph, UEdGraphNode* Node)
	{
		if (!Node)
		{
			return;
		}
		if (Graph)
		{
			Graph->RemoveNode(Node, true);
		}
		Node->DestroyNode();
	}

	/** The common way out of a refusal: the node goes, the reason is recorded and told to the client. */
	UEdGraphNode* Refuse(UEdGraph* Graph, UEdGraphNode* Node, const FString& Text, Calvorn::FToolResult& Result)
	{
		RemoveRefusedNode(Graph, Node);
		FPopulateTelemetry::RecordValidationFailure(Result, Text);
		Result.AddWarningMessage(Text);
		return nullptr;
	}

	/** A refusal that also shows the ranked candidates, so the client can pick a better request. */
	UEdGraphNode* RefuseWithCandidates(UEdGraph* Graph, UEdGraphNode* Node, const FString& Text, const TArray<FCamMatch>& Candidates, Calvorn::FToolResult& Result)
	{
		FContextActionMenuService::ReportCandidateMatches(Candidates, Result, Text);
		return Refuse(Graph, Node, Text, Result);
	}

	/**
	 * A signature pin's type as the request spells it. Only what the check compares is taken over as written; the
	 * category is not normalised, since the comparison is with what the client asked for.
	 */
	FEdGraphPinType MakeSignaturePinType(const FPinModificationRecord& Pin)
	{
		FEdGraphPinType Type;
		if (!Pin.PinType.IsSet())
		{
			return Type;
		}
		const FPinTypeRecord& Record = Pin.PinType.GetValue();
		if (!Record.Category.IsEmpty())
		{
			Type.PinCategory = FName(*Record.Category);
		}
		if (!Record.SubCategory.IsEmpty())
		{
			Type.PinSubCategory = FName(*Record.SubCategory);
		}
		if (!Record.SubCategoryObject.IsEmpty())
		{
			Type.PinSubCategoryObject = StaticFindObject(UObject::StaticClass(), nullptr, *Record.SubCategoryObject);
		}
		if (Record.ContainerType.Equals(TEXT("array"), ESearchCase::IgnoreCase))
		{
			Type.ContainerType = EPinContainerType::Array;
		}
		else if (Record.ContainerType.Equals(TEXT("set"), ESearchCase::IgnoreCase))
		{
			Type.ContainerType = EPinContainerType::Set;
		}
		else if (Record.ContainerType.Equals(TEXT("map"), ESearchCase::IgnoreCase))
		{
			Type.ContainerType = EPinContainerType::Map;
		}
		return Type;
	}

	/**
	 * Adds the requested parameters (entry) or return values (result) and checks that each exists with the category
	 * asked for. Null when one is missing or of another category.
	 */
	bool AddSignaturePins(UK2Node_EditablePinBase* Node, bool bIsEntry, const FNodeModificationRecord& Record, FString& OutFailure)
	{
		const EEdGraphPinDirection Direction = bIsEntry ? EGPD_Output : EGPD_Input;
		for (const FPinModificationRecord& Pin : Record.Pins)
		{
			if (Pin.Action != EPopulateAction::Add)
			{
				continue;
			}
			const FEdGraphPinType Type = MakeSignaturePinType(Pin);
			Node->CreateUserDefinedPin(FName(*Pin.PinName), Type, Direction, true);
			const UEdGraphPin* Created = Node->FindPin(Pin.PinName);
			if (!Created)
			{
				OutFailure = bIsEntry
					? FString::Printf(TEXT("[Failure] Failed to create function parameter '%s'"), *Pin.PinName)
					: FString::Printf(TEXT("[Failure] Failed to create function return value '%s'"), *Pin.PinName);
				return false;
			}
			if (Created->PinType.PinCategory != Type.PinCategory)
			{
				const FString Expected = Type.PinCategory.ToString();
				const FString Actual = Created->PinType.PinCategory.ToString();
				OutFailure = bIsEntry
					? FString::Printf(TEXT("[Failure] Function parameter '%s' has wrong type (expected %s, got %s)"), *Pin.PinName, *Expected, *Actual)
					: FString::Printf(TEXT("[Failure] Function return value '%s' has wrong type (expected %s, got %s)"), *Pin.PinName, *Expected, *Actual);
				return false;
			}
		}
		return true;
	}

	/**
	 * Points a delegate node at the requested function of its scope class when that function can be bound. The node
	 * stays either way: an unbound delegate is still a useful node for the client to finish by hand.
	 */
	void BindDelegateFunction(UK2Node_CreateDelegate* Node, const FNodeModificationRecord& Record, const FString& BindingFunction, Calvorn::FToolResult& Result)
	{
		UClass* ScopeClass = Node->GetScopeClass(false);
		if (!ScopeClass)
		{
			return;
		}
		const FName Requested(*BindingFunction);
		TArray<FString> Compatible;
		const UFunction* Found = nullptr;
		for (TFieldIterator<UFunction> It(ScopeClass, EFieldIteratorFlags::IncludeSuper, EFieldIteratorFlags::IncludeDeprecated, EFieldIteratorFlags::ExcludeInterfaces); It; ++It)
		{
			const UFunction* Function = *It;
			if (!UEdGraphSchema_K2::FunctionCanBeUsedInDelegate(Function))
			{
				continue;
			}
			Compatible.Add(Function->GetName());
			if (Function->GetFName() == Requested)
			{
				Found = Function;
				break;
			}
		}

		if (Found)
		{
			// The function's own spelling, so that the node shows the name the class declares.
			Node->SetFunction(Found->GetFName());
			Node->HandleAnyChange(true);
			FPopulateTelemetry::SetTelemetryString(Result, FString::Printf(TEXT("delegate_binding_%s"), *Record.RequestGuid), Found->GetName());
			return;
		}

		const FString ScopeName = ScopeClass->GetName();
		FPopulateTelemetry::RecordValidationFailure(Result, FString::Printf(TEXT("Could not find delegate-compatible function '%s' in scope class '%s' for node '%s'."), *BindingFunction, *ScopeName, *Record.RequestGuid));
		if (Compatible.Num() > 0)
		{
			Result.AddWarningMessage(FString::Printf(TEXT("Available delegate-compatible functions in '%s': %s"), *ScopeName, *FString::Join(Compatible, TEXT(", "))));
		}
		else
		{
			Result.AddWarningMessage(FString::Printf(TEXT("No delegate-compatible functions found in scope class '%s'."), *ScopeName));
		}
		TSharedPtr<FJsonObject> Failure = MakeShared<FJsonObject>();
		Failure->SetStringField(TEXT("node_id"), Record.RequestGuid);
		Failure->SetStringField(TEXT("requested_function"), BindingFunction);
		Failure->SetStringField(TEXT("scope_class"), ScopeName);
		Failure->SetStringField(TEXT("reason"), TEXT("function_not_found_or_incompatible"));
		FPopulateTelemetry::AppendObject(Result, TEXT("delegate_binding_failures"), Failure);
	}

	/** Names of the Blueprint's own variables and of its widgets marked as variables, in declaration order. */
	TArray<FString> CollectVariableNames(const UBlueprint* Blueprint)
	{
		TArray<FString> Names;
		for (const FBPVariableDescription& Variable : Blueprint->NewVariables)
		{
			Names.Add(Variable.VarName.ToString());
		}
		if (const UWidgetBlueprint* WidgetBlueprint = Cast<UWidgetBlueprint>(Blueprint))
		{
			if (WidgetBlueprint->WidgetTree)
			{
				TArray<UWidget*> Widgets;
				WidgetBlueprint->WidgetTree->GetAllWidgets(Widgets);
				for (const UWidget* Widget : Widgets)
				{
					if (Widget && Widget->bIsVariable)
					{
						Names.Add(Widget->GetName());
					}
				}
			}
		}
		return Names;
	}

	bool BlueprintHasVariable(const UBlueprint* Blueprint, const FName Name)
	{
		if (FBlueprintEditorUtils::FindNewVariableIndex(Blueprint, Name) != INDEX_NONE)
		{
			return true;
		}
		for (const UClass* Class = Blueprint->ParentClass; Class; Class = Class->GetSuperClass())
		{
			if (Class->FindPropertyByName(Name))
			{
				return true;
			}
		}
		if (const UWidgetBlueprint* WidgetBlueprint = Cast<UWidgetBlueprint>(Blueprint))
		{
			if (WidgetBlueprint->WidgetTree)
			{
				TArray<UWidget*> Widgets;
				WidgetBlueprint->WidgetTree->GetAllWidgets(Widgets);
				for (const UWidget* Widget : Widgets)
				{
					if (Widget && Widget->bIsVariable && Widget->GetFName() == Name)
					{
						return true;
					}
				}
			}
		}
		return false;
	}
}

bool FSpawnValidation::IsEquivalentNodeClass(const FString& RequestedClass, const FString& CreatedClass)
{
	if (RequestedClass.Equals(CreatedClass, ESearchCase::IgnoreCase))
	{
		return true;
	}
	if (RequestedClass.Equals(TEXT("K2Node_CallFunction"), ESearchCase::IgnoreCase)
		&& (CreatedClass.Equals(TEXT("K2Node_PromotableOperator"), ESearchCase::IgnoreCase) || CreatedClass.Equals(TEXT("K2Node_CommutativeAssociativeBinaryOperator"), ESearchCase::IgnoreCase)))
	{
		return true;
	}
	// Any other pair passes as well: clients name node classes loosely ("K2Node_Function", a macro for a call), and
	// the binding, existence and type checks that follow are what keep a wrong match out of the graph.
	return true;
}

bool FSpawnValidation::ValidateVariableExists(UBlueprint* Blueprint, const FString& Name, FString& OutError)
{
	if (!Blueprint)
	{
		OutError = TEXT("Blueprint is null");
		return false;
	}
	if (BlueprintHasVariable(Blueprint, FName(*Name)))
	{
		return true;
	}

	OutError = FString::Printf(TEXT("Variable '%s' does not exist in blueprint. Create the variable first and then try again."), *Name);
	const TArray<FString> Names = CollectVariableNames(Blueprint);
	if (Names.Num() == 0)
	{
		OutError += TEXT("\n\nNo variables exist in this blueprint yet.");
	}
	else if (Names.Num() <= 10)
	{
		OutError += FString::Printf(TEXT("\n\nAvailable variables: %s"), *FString::Join(Names, TEXT(", ")));
	}
	else
	{
		OutError += FString::Printf(TEXT("\n\n%d variables exist in this blueprint. Use read_blueprint_variables to list them."), Names.Num());
	}
	return false;
}

UEdGraphNode* FSpawnValidation::ValidateSpawnedNode(UEdGraphNode* Node, const FNodeModificationRecord& Record, UEdGraph* Graph, UBlueprint* Blueprint, const FVector2D& Position, const TArray<FCamMatch>& Candidates, Calvorn::FToolResult& Result)
{
	// 1. The class the client asked for, from the record or, failing that, its metadata.
	FString RequestedClass = Record.ClassName;
	if (RequestedClass.IsEmpty())
	{
		RequestedClass = Record.GetMetadata(TEXT("class_name"));
	}

	// 2. The node's class against the request. A comment has no class worth comparing.
	if (!RequestedClass.IsEmpty() && !RequestedClass.Equals(TEXT("EdGraphNode_Comment"), ESearchCase::IgnoreCase))
	{
		if (!Node)
		{
			const FString Text = TEXT("[Failure] Cannot validate node class because node creation failed");
			FPopulateTelemetry::RecordValidationFailure(Result, Text);
			Result.AddWarningMessage(Text);
		}
		else
		{
			const FString CreatedClass = Node->GetClass()->GetName();
			if (!IsEquivalentNodeClass(RequestedClass, CreatedClass))
			{
				return RefuseWithCandidates(Graph, Node, FString::Printf(TEXT("[Failure] Created node '%s' (class '%s') but requested class '%s' not a known equivalent conversion. Suggestions are provided (not mandatory); consider deterministic spawning if possible or refining the fuzzy request."), *Record.MenuTitle, *CreatedClass, *RequestedClass), Candidates, Result);
			}
		}
	}

	// 3. A state takes the name the request gives it.
	const FString StateName = Record.GetMetadata(TEXT("state_name"));
	if (!StateName.IsEmpty())
	{
		if (UAnimStateNode* StateNode = Cast<UAnimStateNode>(Node))
		{
			StateNode->OnRenameNode(StateName);
		}
	}

	// 4. A call node must call exactly the function the metadata names: a fuzzy match often lands on a namesake.
	FString RequestedFunction = Record.GetMetadata(TEXT("target_function"));
	if (RequestedFunction.IsEmpty())
	{
		RequestedFunction = Record.GetMetadata(TEXT("FunctionName"));
	}
	if (!RequestedFunction.IsEmpty())
	{
		if (!Node)
		{
			const FString Text = TEXT("[Failure] Cannot validate function binding because node creation failed");
			FPopulateTelemetry::RecordValidationFailure(Result, Text);
			Result.AddWarningMessage(Text);
		}
		else if (const UK2Node_CallFunction* CallNode = Cast<UK2Node_CallFunction>(Node))
		{
			const FString SpawnedFunction = CallNode->FunctionReference.GetMemberName().ToString();
			if (!SpawnedFunction.Equals(RequestedFunction, ESearchCase::CaseSensitive))
			{
				return RefuseWithCandidates(Graph, Node, FString::Printf(TEXT("[Failure] Created function node '%s' but function '%s' was requested (spawned '%s'). Suggestions are provided (not mandatory); consider deterministic spawning if possible or refining the fuzzy request."), *Record.MenuTitle, *RequestedFunction, *SpawnedFunction), Candidates, Result);
			}
		}
	}

	if (!Node)
	{
		return nullptr;
	}

	// 5. A call of a function that does not exist would only fail at compile time.
	if (const UK2Node_CallFunction* CallNode = Cast<UK2Node_CallFunction>(Node))
	{
		if (Record.GetMetadata(TEXT("target_function")).IsEmpty() && !CallNode->GetTargetFunction())
		{
			const UClass* FunctionClass = CallNode->FunctionReference.GetMemberParentClass();
			const FString Reason = FString::Printf(TEXT("Function node validation failed: Function '%s' does not exist in class '%s' (fuzzy match may have selected wrong node)"), *CallNode->FunctionReference.GetMemberName().ToString(), FunctionClass ? *FunctionClass->GetName() : TEXT("Unknown"));
			return Refuse(Graph, Node, FString::Printf(TEXT("[Failure] %s"), *Reason), Result);
		}
	}

	// 6. An event must be one the Blueprint's class can receive.
	if (const UK2Node_Event* EventNode = Cast<UK2Node_Event>(Node))
	{
		const FName EventName = EventNode->EventReference.GetMemberName();
		if (!EventName.IsNone())
		{
			const UClass* GeneratedClass = Blueprint ? Blueprint->GeneratedClass.Get() : nullptr;
			if (!GeneratedClass || !GeneratedClass->FindFunctionByName(EventName))
			{
				const FString Reason = FString::Printf(TEXT("Event node validation failed: Event '%s' does not exist in Blueprint class (fuzzy match may have selected wrong node)"), *EventName.ToString());
				return Refuse(Graph, Node, FString::Printf(TEXT("[Failure] %s"), *Reason), Result);
			}
		}
	}

	// 7. A custom event needs a name; the request may give it one.
	if (UK2Node_CustomEvent* CustomEvent = Cast<UK2Node_CustomEvent>(Node))
	{
		if (CustomEvent->GetFunctionName().IsNone())
		{
			return Refuse(Graph, Node, TEXT("[Failure] Custom event node validation failed: Custom event has no name"), Result);
		}
		const FString EventName = Record.GetMetadata(TEXT("event_name"));
		if (!EventName.IsEmpty())
		{
			CustomEvent->CustomFunctionName = FName(*EventName);
			CustomEvent->bIsEditable = true;
		}
	}

	// 8. A cast to nothing.
	if (const UK2Node_DynamicCast* CastNode = Cast<UK2Node_DynamicCast>(Node))
	{
		if (!CastNode->TargetType)
		{
			return Refuse(Graph, Node, TEXT("[Failure] Cast node validation failed: Target class does not exist (fuzzy match may have selected wrong node)"), Result);
		}
	}

	// 9. Position.
	Node->NodePosX = static_cast<int32>(Position.X);
	Node->NodePosY = static_cast<int32>(Position.Y);

	// 10. A math node's title is its expression. The class is reached by name so that this check holds for any node
	// that reports parse problems through the node's compiler message fields.
	if (IsNodeOfClassNamed(Node, TEXT("K2Node_MathExpression")))
	{
		Node->OnRenameNode(Record.MenuTitle);
		if (Node->bHasCompilerMessage && Node->ErrorType >= 1)
		{
			const FString ErrorMsg = Node->ErrorMsg;
			return Refuse(Graph, Node, FString::Printf(TEXT("[Failure] Invalid math expression '%s': %s"), *Record.MenuTitle, *ErrorMsg), Result);
		}
	}

	// 11. Parameters of a function entry, return values of a function result.
	UK2Node_EditablePinBase* SignatureNode = Cast<UK2Node_FunctionEntry>(Node);
	const bool bIsEntry = SignatureNode != nullptr;
	if (!SignatureNode)
	{
		SignatureNode = Cast<UK2Node_FunctionResult>(Node);
	}
	if (SignatureNode)
	{
		FString Failure;
		if (!AddSignaturePins(SignatureNode, bIsEntry, Record, Failure))
		{
			return Refuse(Graph, Node, Failure, Result);
		}
	}

	// 12. Variable reads and writes of variables the Blueprint lacks.
	const UK2Node_Variable* VariableNode = Cast<UK2Node_VariableGet>(Node);
	if (!VariableNode)
	{
		VariableNode = Cast<UK2Node_VariableSet>(Node);
	}
	if (VariableNode)
	{
		FString Error;
		if (!ValidateVariableExists(Blueprint, VariableNode->GetVarNameString(), Error))
		{
			return Refuse(Graph, Node, FString::Printf(TEXT("[Failure] %s"), *Error), Result);
		}
	}

	// 13. Delegate binding; a failure here keeps the node.
	if (UK2Node_CreateDelegate* DelegateNode = Cast<UK2Node_CreateDelegate>(Node))
	{
		const FString BindingFunction = Record.GetMetadata(TEXT("binding_function"));
		if (!BindingFunction.IsEmpty())
		{
			BindDelegateFunction(DelegateNode, Record, BindingFunction, Result);
		}
	}

	// 14. Requests marked as enum comparisons are counted, so that their failures can be related to attempts.
	if (Record.GetMetadata(TEXT("test_category")).Equals(TEXT("enum_comparison"), ESearchCase::IgnoreCase))
	{
		FPopulateTelemetry::IncrementCounter(Result, TEXT("enum_comparison_attempts"));
		const TSharedPtr<FJsonObject> Telemetry = FPopulateTelemetry::GetOrCreateTelemetry(Result);
		if (!Telemetry.IsValid() || !Telemetry->HasField(TEXT("enum_comparison_failures")))
		{
			FPopulateTelemetry::SetTelemetryNumber(Result, TEXT("enum_comparison_failures"), 0.0);
		}
	}

	return Node;
}
