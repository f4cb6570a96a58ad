#include "Operations/BlueprintGraphCreateOperation.h"

#include "AssetOperationBase.h"
#include "BlueprintUtils.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "K2Node_Event.h"
#include "K2Node_FunctionEntry.h"
#include "K2Node_FunctionResult.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Kismet2/Kismet2NameValidators.h"
#include "ModificationReadRegistry.h"
#include "OperationDurationScope.h"
#include "Templates/Casts.h"
#include "ToolInfo.h"
#include "ToolResult.h"
#include "UObject/Class.h"

namespace
{
	using namespace Calvorn;

	template <typename NodeType>
	NodeType* FindNodeOfClass(const UEdGraph* Graph)
	{
		if (!Graph)
		{
			return nullptr;
		}
		for (UEdGraphNode* Node : Graph->Nodes)
		{
			if (NodeType* Typed = Cast<NodeType>(Node))
			{
				return Typed;
			}
		}
		return nullptr;
	}

	/** A graph of the Blueprint by name, without case, wherever it lives. */
	UEdGraph* FindGraphByName(const UBlueprint* Blueprint, const FString& Name)
	{
		TArray<UEdGraph*> Graphs;
		Blueprint->GetAllGraphs(Graphs);
		for (UEdGraph* Graph : Graphs)
		{
			if (Graph && Graph->GetName().Equals(Name, ESearchCase::IgnoreCase))
			{
				return Graph;
			}
		}
		return nullptr;
	}

	bool IsFunctionGraph(const UBlueprint* Blueprint, const UEdGraph* Graph)
	{
		if (Blueprint->FunctionGraphs.Contains(Graph))
		{
			return true;
		}
		for (const FBPInterfaceDescription& Interface : Blueprint->ImplementedInterfaces)
		{
			if (Interface.Graphs.Contains(Graph))
			{
				return true;
			}
		}
		return false;
	}

	const FString& GetSchemaName()
	{
		static const FString Name = UEdGraphSchema_K2::StaticClass()->GetName();
		return Name;
	}

	/** Adds a node of the class through the graph's node creator, with a guid and its pins. */
	template <typename NodeType>
	NodeType* AddTerminator(UEdGraph& Graph, const UK2Node_FunctionEntry* PlaceBeside)
	{
		FGraphNodeCreator<NodeType> Creator(Graph);
		NodeType* Node = Creator.CreateNode();
		if (!Node)
		{
			return nullptr;
		}
		if (PlaceBeside)
		{
			Node->FunctionReference = PlaceBeside->FunctionReference;
			Node->NodePosX = PlaceBeside->NodePosX + 400;
			Node->NodePosY = PlaceBeside->NodePosY;
		}
		else
		{
			Node->FunctionReference.SetSelfMember(Graph.GetFName());
		}
		Creator.Finalize();
		return Node;
	}

	/**
	 * The result node of a function graph, made beside its entry when it has none. A new result node
	 * is wired to an entry whose execution goes nowhere yet, so that the function returns its values.
	 */
	UK2Node_FunctionResult* FindOrAddResultNode(UEdGraph& Graph, UK2Node_FunctionEntry* Entry)
	{
		if (UK2Node_FunctionResult* Existing = FindNodeOfClass<UK2Node_FunctionResult>(&Graph))
		{
			return Existing;
		}
		UK2Node_FunctionResult* Made = FBlueprintEditorUtils::FindOrCreateFunctionResultNode(Entry);
		if (!Made)
		{
			Made = AddTerminator<UK2Node_FunctionResult>(Graph, Entry);
		}
		const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
		UEdGraphPin* Then = Made && Entry ? Schema->FindExecutionPin(*Entry, EGPD_Output) : nullptr;
		UEdGraphPin* Execute = Made ? Schema->FindExecutionPin(*Made, EGPD_Input) : nullptr;
		if (Then && Execute && Then->LinkedTo.Num() == 0)
		{
			Schema->TryCreateConnection(Then, Execute);
		}
		return Made;
	}

	/**
	 * Declares a parameter pin on a node. A pin of that name that exists already is kept when its type
	 * is the same and replaced otherwise, so that configuring a signature twice gives the same signature.
	 */
	UEdGraphPin* DeclareParameter(UK2Node_EditablePinBase& Node, const FName Name, const FEdGraphPinType& Type, EEdGraphPinDirection Direction)
	{
		for (const TSharedPtr<FUserPinInfo>& Info : Node.UserDefinedPins)
		{
			if (Info.IsValid() && Info->PinName == Name)
			{
				if (Info->PinType == Type && Info->DesiredPinDirection == Direction)
				{
					return Node.FindPin(Name);
				}
				Node.RemoveUserDefinedPinByName(Name);
				break;
			}
		}
		return Node.CreateUserDefinedPin(Name, Type, Direction, /*bUseUniqueName*/ true);
	}

	/** The type a parameter or return value entry declares; false with the reason when it has none that reads. */
	bool ReadDeclaredType(const FJsonObject& Entry, FEdGraphPinType& OutType, FString& OutError)
	{
		const TSharedPtr<FJsonObject>* TypeObject = nullptr;
		if (!Entry.TryGetObjectField(TEXT("type"), TypeObject))
		{
			OutError = TEXT("it has no 'type' object");
			return false;
		}
		return FAssetOperationBase::ConvertJsonToEdGraphPinType(*TypeObject, OutType, &OutError);
	}

	/** The return value of a function entry: a pin type, or {"name", "type"}; false when absent or unreadable. */
	bool ReadReturnType(const FJsonObject& FunctionEntry, FName& OutName, FEdGraphPinType& OutType, FString& OutError)
	{
		const TSharedPtr<FJsonObject>* ReturnObject = nullptr;
		if (!FunctionEntry.TryGetObjectField(TEXT("return_type"), ReturnObject) || !ReturnObject->IsValid())
		{
			OutError = TEXT("it is not an object");
			return false;
		}
		OutName = UEdGraphSchema_K2::PN_ReturnValue;
		if ((*ReturnObject)->HasTypedField<EJson::Object>(TEXT("type")))
		{
			FString Name;
			if ((*ReturnObject)->TryGetStringField(TEXT("name"), Name) && !Name.TrimStartAndEnd().IsEmpty())
			{
				OutName = FName(*Name.TrimStartAndEnd());
			}
			return ReadDeclaredType(**ReturnObject, OutType, OutError);
		}
		return FAssetOperationBase::ConvertJsonToEdGraphPinType(*ReturnObject, OutType, &OutError);
	}

	void TrackReadBack(FToolResult& Result, const TCHAR* ReadTool, const FString& Path, const TCHAR* ListField, const TArray<FString>& Names)
	{
		if (Names.Num() == 0 || !FModificationReadRegistry::Get().IsReadToolRegistered(ReadTool))
		{
			return;
		}
		TSharedPtr<FJsonObject> Parameters = MakeShared<FJsonObject>();
		Parameters->SetStringField(ToolInfo::FieldName_Path, Path);
		TArray<TSharedPtr<FJsonValue>> Values;
		for (const FString& Name : Names)
		{
			Values.Add(MakeShared<FJsonValueString>(Name));
		}
		Parameters->SetArrayField(ListField, Values);
		Parameters->SetBoolField(TEXT("finalize_modifications"), true);
		Result.TrackModification(ReadTool, Parameters);
	}

	/** Makes an overriding event node for a parent's event, or reports the one that exists. */
	FBlueprintGraphCreateOperation::EFunctionGraphOutcome AddEventOverride(UBlueprint* Blueprint, const FName FunctionName, UClass* DeclaringClass, FToolResult& Result)
	{
		using EOutcome = FBlueprintGraphCreateOperation::EFunctionGraphOutcome;
		const FString ParentName = DeclaringClass ? DeclaringClass->GetName() : FString(TEXT("Unknown"));

		UEdGraph* EventGraph = FBlueprintEditorUtils::FindEventGraph(Blueprint);
		if (!EventGraph)
		{
			TSet<FName> Taken;
			FBlueprintEditorUtils::GetAllGraphNames(Blueprint, Taken);
			FName GraphName = UEdGraphSchema_K2::GN_EventGraph;
			for (int32 Suffix = 1; Taken.Contains(GraphName); ++Suffix)
			{
				GraphName = FName(*FString::Printf(TEXT("%s_%d"), *UEdGraphSchema_K2::GN_EventGraph.ToString(), Suffix));
			}
			EventGraph = FBlueprintEditorUtils::CreateNewGraph(Blueprint, GraphName, UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
			if (!EventGraph)
			{
				Result.AddErrorMessage(FString::Printf(TEXT("Failed to create event graph for %s"), *FunctionName.ToString()));
				return EOutcome::Failed;
			}
			FBlueprintEditorUtils::AddUbergraphPage(Blueprint, EventGraph);
			Result.AddSuccessMessage(FString::Printf(TEXT("Created new event graph: %s, with graph_schema: %s"), *EventGraph->GetName(), *GetSchemaName()));
		}

		if (UK2Node_Event* Existing = FBlueprintEditorUtils::FindOverrideForFunction(Blueprint, DeclaringClass, FunctionName))
		{
			Result.AddWarningMessage(FString::Printf(TEXT("The graph %s already exists as an event on this blueprint's EventGraph, overriding the parent class: %s. Instead of creating a function, continue implementing using this event: %s, or choose a different approach."),
				*FunctionName.ToString(), *ParentName, *Existing->GetNodeTitle(ENodeTitleType::ListView).ToString()));
			return EOutcome::EventOverride;
		}

		FGraphNodeCreator<UK2Node_Event> Creator(*EventGraph);
		UK2Node_Event* EventNode = Creator.CreateNode();
		if (!EventNode)
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Failed to create event override node for %s"), *FunctionName.ToString()));
			return EOutcome::Failed;
		}
		EventNode->EventReference.SetExternalMember(FunctionName, DeclaringClass);
		EventNode->bOverrideFunction = true;
		const FVector2D Place = EventGraph->GetGoodPlaceForNewNode();
		EventNode->NodePosX = static_cast<int32>(Place.X);
		EventNode->NodePosY = static_cast<int32>(Place.Y);
		Creator.Finalize();
		FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Blueprint);
		Result.AddSuccessMessage(FString::Printf(TEXT("This graph is implemented as an Event on the parent class and must be an event on this blueprint as well. Instead of creating a function, an Event node %s was added as an override to Event %s in parent class %s. Continue implementing this as an event, or remove the node and choose a different approach."),
			*EventNode->GetNodeTitle(ENodeTitleType::ListView).ToString(), *FunctionName.ToString(), *ParentName));
		return EOutcome::EventOverride;
	}

	/** Whether a new member may take the name, with the editor's reason in an error when it may not. */
	bool IsNameFreeForNewGraph(UBlueprint* Blueprint, const FString& Name, const TCHAR* What, FToolResult& Result)
	{
		FKismetNameValidator Validator(Blueprint);
		const EValidatorResult Verdict = Validator.IsValid(Name);
		if (Verdict == EValidatorResult::Ok)
		{
			return true;
		}
		Result.AddErrorMessage(FString::Printf(TEXT("Invalid %s name '%s': %s"), What, *Name, *INameValidatorInterface::GetErrorText(Name, Verdict).ToString()));
		return false;
	}

	/** Decides what a new name is (a plain function, an override of a parent function, or an event) and makes it. */
	UEdGraph* CreateNewFunctionOrOverride(UBlueprint* Blueprint, const FName FunctionName, FToolResult& Result, FBlueprintGraphCreateOperation::EFunctionGraphOutcome& OutOutcome)
	{
		using EOutcome = FBlueprintGraphCreateOperation::EFunctionGraphOutcome;
		UFunction* ParentFunction = nullptr;
		UClass* DeclaringClass = FBlueprintEditorUtils::GetOverrideFunctionClass(Blueprint, FunctionName, &ParentFunction);
		if (DeclaringClass && ParentFunction && !UEdGraphSchema_K2::CanKismetOverrideFunction(ParentFunction))
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Function '%s' already exists in parent class %s and cannot be overridden; choose another name"),
				*FunctionName.ToString(), *DeclaringClass->GetName()));
			OutOutcome = EOutcome::Failed;
			return nullptr;
		}
		if (!DeclaringClass && !IsNameFreeForNewGraph(Blueprint, FunctionName.ToString(), TEXT("function"), Result))
		{
			OutOutcome = EOutcome::Failed;
			return nullptr;
		}
		if (DeclaringClass && ParentFunction && UEdGraphSchema_K2::FunctionCanBePlacedAsEvent(ParentFunction))
		{
			OutOutcome = AddEventOverride(Blueprint, FunctionName, DeclaringClass, Result);
			return nullptr;
		}

		UEdGraph* Graph = FBlueprintEditorUtils::CreateNewGraph(Blueprint, FunctionName, UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
		if (!Graph)
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Failed to create function graph: %s"), *FunctionName.ToString()));
			OutOutcome = EOutcome::Failed;
			return nullptr;
		}
		if (DeclaringClass && ParentFunction)
		{
			// An override takes its signature from the parent's function, which the user does not edit.
			FBlueprintEditorUtils::AddFunctionGraph(Blueprint, Graph, /*bIsUserCreated*/ false, ParentFunction);
			Result.AddSuccessMessage(FString::Printf(TEXT("Overriding function: %s in parent class: %s"), *FunctionName.ToString(), *DeclaringClass->GetName()));
		}
		else
		{
			FBlueprintEditorUtils::AddFunctionGraph<UClass>(Blueprint, Graph, /*bIsUserCreated*/ true, nullptr);
			Result.AddSuccessMessage(FString::Printf(TEXT("Created new function graph: %s, with graph_schema: %s"), *Graph->GetName(), *GetSchemaName()));
		}
		FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Blueprint);
		OutOutcome = EOutcome::FunctionGraph;
		return Graph;
	}
}

FBlueprintGraphCreateOperation::EFunctionGraphOutcome FBlueprintGraphCreateOperation::CreateFunctionGraph(UBlueprint* Blueprint, const FString& FunctionName, UEdGraph*& OutGraph, FToolResult& Result, bool bHasReturn)
{
	OutGraph = nullptr;
	const FString Name = FunctionName.TrimStartAndEnd();
	if (!Blueprint || Name.IsEmpty())
	{
		Result.AddErrorMessage(TEXT("Invalid Blueprint or FunctionName"));
		return EFunctionGraphOutcome::Failed;
	}
	// Interface graphs must exist before the lookup, so that a name an interface declares finds its graph.
	FBlueprintEditorUtils::ConformImplementedInterfaces(Blueprint);

	UEdGraph* Graph = FindGraphByName(Blueprint, Name);
	if (Graph && !IsFunctionGraph(Blueprint, Graph))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("A graph named '%s' already exists in this Blueprint and is not a function graph; choose another name"), *Graph->GetName()));
		return EFunctionGraphOutcome::Failed;
	}
	if (!Graph)
	{
		EFunctionGraphOutcome Outcome = EFunctionGraphOutcome::Failed;
		Graph = CreateNewFunctionOrOverride(Blueprint, FName(*Name), Result, Outcome);
		if (!Graph)
		{
			return Outcome;
		}
	}

	UK2Node_FunctionEntry* Entry = FindNodeOfClass<UK2Node_FunctionEntry>(Graph);
	if (!Entry)
	{
		Entry = AddTerminator<UK2Node_FunctionEntry>(*Graph, nullptr);
		if (!Entry)
		{
			Result.AddErrorMessage(TEXT("Failed to create FunctionEntry node"));
			return EFunctionGraphOutcome::Failed;
		}
	}
	if (bHasReturn)
	{
		FindOrAddResultNode(*Graph, Entry);
	}
	OutGraph = Graph;
	return EFunctionGraphOutcome::FunctionGraph;
}

bool FBlueprintGraphCreateOperation::CreateDelegateSignatureGraph(UBlueprint* Blueprint, const FString& DelegateName, UEdGraph*& OutGraph, FToolResult& Result)
{
	OutGraph = nullptr;
	const FString Name = DelegateName.TrimStartAndEnd();
	if (!Blueprint || Name.IsEmpty())
	{
		Result.AddErrorMessage(TEXT("Invalid Blueprint or DelegateName"));
		return false;
	}
	for (UEdGraph* Existing : Blueprint->DelegateSignatureGraphs)
	{
		if (Existing && Existing->GetName().Equals(Name, ESearchCase::IgnoreCase))
		{
			OutGraph = Existing;
			return true;
		}
	}
	if (UEdGraph* Clash = FindGraphByName(Blueprint, Name))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Failed to create delegate signature graph: %s (a graph of that name already exists)"), *Clash->GetName()));
		return false;
	}

	// The dispatcher is a multicast delegate variable whose signature is the graph of the same name.
	const FName DelegateFName(*Name);
	if (FBlueprintEditorUtils::FindNewVariableIndex(Blueprint, DelegateFName) == INDEX_NONE)
	{
		if (!IsNameFreeForNewGraph(Blueprint, Name, TEXT("delegate"), Result))
		{
			return false;
		}
		FEdGraphPinType DelegateType;
		DelegateType.PinCategory = UEdGraphSchema_K2::PC_MCDelegate;
		if (!FBlueprintEditorUtils::AddMemberVariable(Blueprint, DelegateFName, DelegateType))
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Failed to create delegate signature graph: %s (its variable could not be added; is the name taken?)"), *Name));
			return false;
		}
	}

	UEdGraph* Graph = FBlueprintEditorUtils::CreateNewGraph(Blueprint, DelegateFName, UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
	if (!Graph)
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Failed to create delegate signature graph: %s"), *Name));
		return false;
	}
	Graph->bEditable = false;
	if (const UEdGraphSchema* Schema = Graph->GetSchema())
	{
		Schema->CreateDefaultNodesForGraph(*Graph);
	}
	if (!FindNodeOfClass<UK2Node_FunctionEntry>(Graph))
	{
		AddTerminator<UK2Node_FunctionEntry>(*Graph, nullptr);
	}
	Blueprint->DelegateSignatureGraphs.Add(Graph);

	const UEdGraphSchema_K2* K2Schema = GetDefault<UEdGraphSchema_K2>();
	K2Schema->AddExtraFunctionFlags(Graph, FUNC_BlueprintCallable | FUNC_BlueprintEvent | FUNC_Public);
	K2Schema->MarkFunctionEntryAsEditable(Graph, true);
	FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Blueprint);
	OutGraph = Graph;
	return true;
}

bool FBlueprintGraphCreateOperation::ConfigureGraphSignature(UBlueprint* Blueprint, UEdGraph* Graph, const FJsonObject& Entry, FToolResult& Result)
{
	if (!Blueprint || !Graph)
	{
		Result.AddErrorMessage(TEXT("Invalid parameters for ConfigureGraphSignature"));
		return false;
	}
	UK2Node_FunctionEntry* EntryNode = FindNodeOfClass<UK2Node_FunctionEntry>(Graph);
	if (!EntryNode)
	{
		Result.AddErrorMessage(TEXT("No FunctionEntry node found in function graph"));
		return false;
	}
	const bool bIsDelegate = Blueprint->DelegateSignatureGraphs.Contains(Graph);
	if (!EntryNode->IsEditable() && !bIsDelegate)
	{
		// An override's signature is its parent's: declaring pins on it would break the override.
		if (Entry.HasField(TEXT("parameters")) || Entry.HasField(TEXT("return_type")))
		{
			Result.AddWarningMessage(FString::Printf(TEXT("[Warning] '%s' overrides a parent function, whose signature it keeps; the parameters and return_type given were not applied"), *Graph->GetName()));
		}
		return true;
	}

	const TArray<TSharedPtr<FJsonValue>>* Parameters = nullptr;
	if (Entry.TryGetArrayField(TEXT("parameters"), Parameters))
	{
		for (int32 Index = 0; Index < Parameters->Num(); ++Index)
		{
			const TSharedPtr<FJsonObject>* Parameter = nullptr;
			FString Name;
			FEdGraphPinType Type;
			FString Why;
			if (!(*Parameters)[Index]->TryGetObject(Parameter))
			{
				Why = TEXT("it is not an object");
			}
			else if (!(*Parameter)->TryGetStringField(TEXT("name"), Name) || Name.TrimStartAndEnd().IsEmpty())
			{
				Why = TEXT("it has no 'name'");
			}
			else
			{
				ReadDeclaredType(**Parameter, Type, Why);
			}
			if (!Why.IsEmpty())
			{
				Result.AddWarningMessage(FString::Printf(TEXT("[Failure] Parameter %d of '%s' was skipped: %s"), Index, *Graph->GetName(), *Why));
				continue;
			}
			FString Direction = TEXT("input");
			(*Parameter)->TryGetStringField(TEXT("direction"), Direction);
			const FName PinName(*Name.TrimStartAndEnd());
			bool bInput = Direction.TrimStartAndEnd().Equals(TEXT("input"), ESearchCase::IgnoreCase);
			if (!bInput && bIsDelegate)
			{
				// A delegate signature has inputs only: what its callers pass to the bound events.
				Result.AddWarningMessage(FString::Printf(TEXT("[Warning] '%s' is an event dispatcher, whose parameters are all inputs; '%s' was declared as an input"), *Graph->GetName(), *Name));
				bInput = true;
			}
			// One name, one parameter: the function's inputs and outputs share a namespace.
			UK2Node_EditablePinBase* OtherSide = bInput ? static_cast<UK2Node_EditablePinBase*>(FindNodeOfClass<UK2Node_FunctionResult>(Graph)) : EntryNode;
			if (OtherSide && OtherSide->UserDefinedPinExists(PinName))
			{
				Result.AddWarningMessage(FString::Printf(TEXT("[Failure] Parameter '%s' of '%s' is already an %s; give the %s another name"), *Name, *Graph->GetName(),
					bInput ? TEXT("output") : TEXT("input"), bInput ? TEXT("input") : TEXT("output")));
				continue;
			}
			if (bInput)
			{
				DeclareParameter(*EntryNode, PinName, Type, EGPD_Output);
			}
			else if (UK2Node_FunctionResult* ResultNode = FindOrAddResultNode(*Graph, EntryNode))
			{
				DeclareParameter(*ResultNode, PinName, Type, EGPD_Input);
			}
		}
	}

	if (Entry.HasField(TEXT("return_type")) && bIsDelegate)
	{
		Result.AddWarningMessage(FString::Printf(TEXT("[Warning] '%s' is an event dispatcher, which returns nothing; its return_type was not applied"), *Graph->GetName()));
	}
	else if (Entry.HasTypedField<EJson::Object>(TEXT("return_type")))
	{
		FName ReturnName;
		FEdGraphPinType ReturnType;
		FString Why;
		if (ReadReturnType(Entry, ReturnName, ReturnType, Why))
		{
			if (UK2Node_FunctionResult* ResultNode = FindOrAddResultNode(*Graph, EntryNode))
			{
				DeclareParameter(*ResultNode, ReturnName, ReturnType, EGPD_Input);
			}
		}
	}

	FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Blueprint);
	return true;
}

UEdGraph* FBlueprintGraphCreateOperation::EnsureEventGraph(UBlueprint* Blueprint, const FString& GraphName, FToolResult& Result)
{
	if (!Blueprint)
	{
		Result.AddErrorMessage(TEXT("Invalid Blueprint when ensuring EventGraph"));
		return nullptr;
	}
	const FString Name = GraphName.TrimStartAndEnd().IsEmpty() ? UEdGraphSchema_K2::GN_EventGraph.ToString() : GraphName.TrimStartAndEnd();
	for (UEdGraph* Page : Blueprint->UbergraphPages)
	{
		if (Page && Page->GetName().Equals(Name, ESearchCase::IgnoreCase))
		{
			return Page;
		}
	}
	UEdGraph* Graph = FindGraphByName(Blueprint, Name) ? nullptr
		: FBlueprintEditorUtils::CreateNewGraph(Blueprint, FName(*Name), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
	if (!Graph)
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Failed to create event graph '%s'"), *Name));
		return nullptr;
	}
	FBlueprintEditorUtils::AddUbergraphPage(Blueprint, Graph);
	FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Blueprint);
	Result.AddSuccessMessage(FString::Printf(TEXT("Created event graph '%s'"), *Graph->GetName()));
	return Graph;
}

void FBlueprintGraphCreateOperation::Execute(const FJsonObject& Json, FToolResult& Result)
{
	FOperationDurationScope Duration(Result);

	FString Path;
	if (!Json.TryGetStringField(ToolInfo::FieldName_Path, Path) || Path.TrimStartAndEnd().IsEmpty())
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Missing required field '%s'"), ToolInfo::FieldName_Path));
		return;
	}
	const TArray<TSharedPtr<FJsonValue>>* Functions = nullptr;
	if (!Json.TryGetArrayField(TEXT("functions"), Functions) || Functions->Num() == 0)
	{
		Result.AddErrorMessage(TEXT("Missing required 'functions' array with at least one entry"));
		return;
	}

	UBlueprint* Blueprint = FBlueprintUtils::LoadBlueprint(Path, Result);
	if (!Blueprint)
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Blueprint not found: %s"), *Path));
		return;
	}
	const FString ObjectPath = Blueprint->GetPathName();
	if (!FBlueprintUtils::CheckOutBlueprint(ObjectPath, Result))
	{
		return;
	}

	TArray<FString> FunctionGraphs;
	TArray<FString> DelegateGraphs;
	int32 Configured = 0;
	for (int32 Index = 0; Index < Functions->Num(); ++Index)
	{
		const TSharedPtr<FJsonObject>* Entry = nullptr;
		if (!(*Functions)[Index]->TryGetObject(Entry))
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Function at index %d is not a valid object"), Index));
			continue;
		}
		FString Name;
		(*Entry)->TryGetStringField(TEXT("name"), Name);
		if (Name.TrimStartAndEnd().IsEmpty())
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Invalid function specification for '%s' (index %d)"), *Name, Index));
			continue;
		}
		bool bIsDelegate = false;
		(*Entry)->TryGetBoolField(TEXT("is_delegate"), bIsDelegate);

		bool bHasReturn = false;
		if ((*Entry)->HasField(TEXT("return_type")))
		{
			FName ReturnName;
			FEdGraphPinType ReturnType;
			FString Why;
			bHasReturn = ReadReturnType(**Entry, ReturnName, ReturnType, Why);
			if (!bHasReturn)
			{
				Result.AddWarningMessage(FString::Printf(TEXT("Function '%s' specified a return_type but the type could not be parsed; proceeding with default result node."), *Name));
				Result.AddWarningMessage(FString::Printf(TEXT("[Warning] The return_type of '%s' was not read: %s"), *Name, *Why));
			}
		}

		UEdGraph* Graph = nullptr;
		if (bIsDelegate)
		{
			if (CreateDelegateSignatureGraph(Blueprint, Name, Graph, Result) && Graph)
			{
				DelegateGraphs.AddUnique(Graph->GetName());
				Configured += ConfigureGraphSignature(Blueprint, Graph, **Entry, Result) ? 1 : 0;
			}
			continue;
		}
		if (CreateFunctionGraph(Blueprint, Name, Graph, Result, bHasReturn) == EFunctionGraphOutcome::FunctionGraph && Graph)
		{
			FunctionGraphs.AddUnique(Graph->GetName());
			Configured += ConfigureGraphSignature(Blueprint, Graph, **Entry, Result) ? 1 : 0;
		}
	}

	Result.SetData(TEXT("functions_created"), FString::FromInt(Configured));
	Result.SetData(ToolInfo::FieldName_Path, ObjectPath);
	FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Blueprint);
	Result.AddModifiedObjects(Blueprint);
	TrackReadBack(Result, ToolInfo::ToolName_ReadBlueprintFunction, ObjectPath, ToolInfo::FieldName_FunctionName, FunctionGraphs);
	TrackReadBack(Result, ToolInfo::ToolName_ReadBlueprintDelegate, ObjectPath, ToolInfo::FieldName_DelegateName, DelegateGraphs);

	// Partial work stands: what was made before and after a failed entry is saved.
	if (FAssetOperationBase::SaveAsset(Blueprint, Result))
	{
		FString SourceControlError;
		if (!FAssetOperationBase::AddAssetToSourceControl(ObjectPath, SourceControlError))
		{
			Result.AddWarningMessage(FString::Printf(TEXT("Blueprint modified successfully, but could not add to source control:\n%s\nPlease manually add the asset in your source control client."), *SourceControlError));
		}
		Result.FinalizeModifications();
	}
	Result.AddSuccessMessage(FString::Printf(TEXT("Created or updated %d function(s) and %d delegate(s) in '%s'"), FunctionGraphs.Num(), DelegateGraphs.Num(), *ObjectPath));
}
