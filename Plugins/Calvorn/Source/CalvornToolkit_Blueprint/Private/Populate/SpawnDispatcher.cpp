#include "Populate/SpawnDispatcher.h"

#include "AssetRegistry/AssetRegistryModule.h"
#include "AssetRegistry/IAssetRegistry.h"
#include "BlueprintActionMenuBuilder.h"
#include "BlueprintNodeUtils.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraph/EdGraphSchema.h"
#include "Engine/Blueprint.h"
#include "K2Node_CallParentFunction.h"
#include "K2Node_VariableGet.h"
#include "K2Node_VariableSet.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Misc/Paths.h"
#include "Populate/ContextActionMenu.h"
#include "Populate/DeterministicSpawner.h"
#include "Populate/EventNodeSpawner.h"
#include "Populate/GraphModificationRecords.h"
#include "Populate/PopulateTelemetry.h"
#include "Populate/SpawnValidation.h"
#include "SafeAssetLoader.h"
#include "ToolResult.h"
#include "UObject/FieldIterator.h"
#include "UObject/UObjectGlobals.h"

namespace
{
	/** Candidates listed in a refusal; more would drown the message a client reads first. */
	constexpr int32 MaxListedCandidates = 20;

	/** An item failure: recorded in telemetry and told to the client, in that order. */
	UEdGraphNode* RecordFailure(Calvorn::FToolResult& Result, const FString& Text)
	{
		FPopulateTelemetry::RecordValidationFailure(Result, Text);
		Result.AddWarningMessage(Text);
		return nullptr;
	}

	/** Where a node of the variable and parent routes goes: the graph's free place, unless the record fixes both coordinates. */
	FVector2D PlaceForRecord(UEdGraph* Graph, const FNodeModificationRecord& Record)
	{
		FVector2D Position = Graph->GetGoodPlaceForNewNode();
		if (Record.NodePosX.IsSet() && Record.NodePosY.IsSet())
		{
			Position = FVector2D(static_cast<double>(Record.NodePosX.GetValue()), static_cast<double>(Record.NodePosY.GetValue()));
		}
		return Position;
	}

	const TCHAR* PresenceWord(const FString* Value)
	{
		return Value ? TEXT("present") : TEXT("missing");
	}

	/**
	 * The node that owns the object of a cross-object access: by the client's id in this call, else the first node of
	 * the graph whose guid contains the text, so a shortened guid from a read is enough.
	 */
	UEdGraphNode* FindOwnerNode(UEdGraph* Graph, const FString& OwnerId, const TMap<FString, UEdGraphNode*>* SessionNodes, bool& bOutFromSession)
	{
		bOutFromSession = false;
		if (SessionNodes)
		{
			if (UEdGraphNode* const* Found = SessionNodes->Find(OwnerId))
			{
				if (*Found)
				{
					bOutFromSession = true;
					return *Found;
				}
			}
		}
		for (UEdGraphNode* Node : Graph->Nodes)
		{
			if (!IsValid(Node))
			{
				continue;
			}
			FString Digits;
			Node->NodeGuid.AppendString(Digits, EGuidFormats::Digits);
			if (Digits.Contains(OwnerId, ESearchCase::IgnoreCase))
			{
				return Node;
			}
		}
		return nullptr;
	}

	UEdGraphNode* SpawnVariableNode(UEdGraph* Graph, const FNodeModificationRecord& Record, UBlueprint* Blueprint, const FString& VariableName, Calvorn::FToolResult& Result, const TMap<FString, UEdGraphNode*>* SessionNodes)
	{
		const bool bIsGet = Record.ClassName.Equals(TEXT("K2Node_VariableGet"), ESearchCase::IgnoreCase);
		const TCHAR* AccessWord = bIsGet ? TEXT("get") : TEXT("set");
		const FVector2D Position = PlaceForRecord(Graph, Record);

		const FString* SourceClass = Record.FindMetadata(TEXT("variable_source_class"));
		const FString* OwnerGuid = Record.FindMetadata(TEXT("property_owner_node_guid"));
		const FString* OwnerPinName = Record.FindMetadata(TEXT("owner_pin_name"));

		if (!SourceClass && !OwnerGuid && !OwnerPinName)
		{
			// A variable of the Blueprint itself must be declared by it: inherited native properties are reached
			// through their own getter and setter functions, not as Blueprint variables.
			if (!FBlueprintEditorUtils::FindMemberVariableGuidByName(Blueprint, FName(*VariableName)).IsValid())
			{
				return RecordFailure(Result, FString::Printf(TEXT("[Failure] Variable '%s' does not exist in Blueprint. Create the variable first using bp_populate_graph before using it in bp_populate_graph."), *VariableName));
			}
			UEdGraphNode* Node = bIsGet
				? static_cast<UEdGraphNode*>(FBlueprintNodeUtils::CreateVariableGetNode(Graph, VariableName, Position))
				: static_cast<UEdGraphNode*>(FBlueprintNodeUtils::CreateVariableSetNode(Graph, VariableName, Position));
			if (!Node)
			{
				return RecordFailure(Result, FString::Printf(TEXT("[Failure] Deterministic variable %s spawn returned null node for variable '%s' (unexpected failure after validation)"), AccessWord, *VariableName));
			}
			return Node;
		}

		if (!SourceClass || !OwnerGuid || !OwnerPinName)
		{
			return RecordFailure(Result, FString::Printf(TEXT("[Failure] Cross-object variable access requires ALL of: variable_source_class, property_owner_node_guid, owner_pin_name. Got: source_class=%s, owner_guid=%s, owner_pin=%s. If you want a Blueprint-owned variable, omit all three fields."), PresenceWord(SourceClass), PresenceWord(OwnerGuid), PresenceWord(OwnerPinName)));
		}

		bool bFromSession = false;
		UEdGraphNode* OwnerNode = FindOwnerNode(Graph, *OwnerGuid, SessionNodes, bFromSession);
		if (!OwnerNode)
		{
			return RecordFailure(Result, FString::Printf(TEXT("[Failure] Owner node '%s' not found in %s"), **OwnerGuid, SessionNodes ? TEXT("CreatedNodes session map or Graph->Nodes") : TEXT("Graph->Nodes (no session map available)")));
		}
		FPopulateTelemetry::SetTelemetryString(Result, FString::Printf(TEXT("cross_object_owner_resolution_%s"), *Record.RequestGuid), bFromSession ? TEXT("session_map") : TEXT("graph_nodes"));

		// The pin is taken by its exact name: a guess at a compatible pin could wire the wrong object.
		UEdGraphPin* OwnerPin = OwnerNode->FindPin(*OwnerPinName);
		if (!OwnerPin)
		{
			return RecordFailure(Result, FString::Printf(TEXT("[Failure] Owner pin '%s' not found on node"), **OwnerPinName));
		}

		UClass* OwnerClass = FSpawnDispatcher::LoadClassQuietly(*SourceClass);
		if (!OwnerClass)
		{
			FSpawnDispatcher::SuggestClassPath(*SourceClass, Result);
			return nullptr;
		}

		UEdGraphNode* Node = bIsGet
			? static_cast<UEdGraphNode*>(FBlueprintNodeUtils::CreateCrossObjectVariableGetNode(Graph, VariableName, OwnerClass, OwnerPin, Position))
			: static_cast<UEdGraphNode*>(FBlueprintNodeUtils::CreateCrossObjectVariableSetNode(Graph, VariableName, OwnerClass, OwnerPin, Position));
		if (!Node)
		{
			return RecordFailure(Result, FString::Printf(TEXT("[Failure] Cross-object variable %s spawn returned null for variable '%s' on class '%s'"), AccessWord, *VariableName, **SourceClass));
		}
		return Node;
	}

	UEdGraphNode* SpawnEventRoute(UEdGraph* Graph, const FNodeModificationRecord& Record, UBlueprint* Blueprint, Calvorn::FToolResult& Result)
	{
		UEdGraphNode* Node = nullptr;
		FString Error;
		if (FEventNodeSpawner::SpawnEventNode(Blueprint, Graph, Record, Result, Node, Error))
		{
			if (Node)
			{
				return Node;
			}
			return RecordFailure(Result, TEXT("[Failure] Deterministic event spawn returned null node"));
		}
		if (!Error.IsEmpty())
		{
			// The event code has told the client already; the telemetry still needs the reason.
			FPopulateTelemetry::RecordValidationFailure(Result, FString::Printf(TEXT("[Failure] %s"), *Error));
		}
		return nullptr;
	}

	UEdGraphNode* SpawnParentCall(UEdGraph* Graph, const FNodeModificationRecord& Record, UBlueprint* Blueprint, Calvorn::FToolResult& Result)
	{
		FString FunctionName = Record.TargetFunction;
		if (FunctionName.IsEmpty())
		{
			if (Record.MenuTitle.IsEmpty())
			{
				return RecordFailure(Result, TEXT("[Failure] K2Node_CallParentFunction requires either target_function or menu_title with 'Parent: FunctionName' format"));
			}
			// The editor titles these nodes "Parent: <Function>"; a client copying that title means the function.
			static const FString ParentPrefix = TEXT("Parent: ");
			FunctionName = Record.MenuTitle.StartsWith(ParentPrefix, ESearchCase::IgnoreCase) ? Record.MenuTitle.RightChop(ParentPrefix.Len()) : Record.MenuTitle;
		}

		UClass* ParentClass = Blueprint->ParentClass;
		if (!ParentClass)
		{
			return RecordFailure(Result, TEXT("[Failure] Blueprint has no parent class - cannot create parent function call"));
		}

		UFunction* Function = ParentClass->FindFunctionByName(FName(*FunctionName));
		if (!Function)
		{
			TArray<FString> Available;
			for (TFieldIterator<UFunction> It(ParentClass, EFieldIteratorFlags::IncludeSuper); It; ++It)
			{
				Available.Add(It->GetName());
			}
			return RecordFailure(Result, FString::Printf(TEXT("[Failure] Function '%s' not found in parent class '%s'. Available functions: [%s]"), *FunctionName, *ParentClass->GetName(), *FString::Join(Available, TEXT(", "))));
		}

		const FVector2D Position = PlaceForRecord(Graph, Record);
		UK2Node_CallParentFunction* Node = NewObject<UK2Node_CallParentFunction>(Graph);
		if (!Node)
		{
			return RecordFailure(Result, TEXT("[Failure] Failed to create UK2Node_CallParentFunction instance"));
		}
		// Clients address nodes by guid; a node placed without the schema action still needs one.
		if (!Node->NodeGuid.IsValid())
		{
			Node->CreateNewGuid();
		}
		Node->FunctionReference.SetExternalMember(Function->GetFName(), ParentClass);
		Node->SetFromFunction(Function);
		Node->AllocateDefaultPins();
		Node->NodePosX = static_cast<int32>(Position.X);
		Node->NodePosY = static_cast<int32>(Position.Y);
		Graph->AddNode(Node, true, true);
		return Node;
	}

	/** The lines of a refusal's candidate list, numbered from 1. */
	FString ListCandidates(const TArray<FCamMatch>& Candidates)
	{
		TArray<FString> Lines;
		for (int32 Index = 0; Index < Candidates.Num() && Index < MaxListedCandidates; ++Index)
		{
			const FCamMatch& Match = Candidates[Index];
			Lines.Add(FString::Printf(TEXT("  %d. '%s' (class: %s, confidence: %.2f)"), Index + 1, *Match.MenuTitle, *Match.NodeClass, Match.Confidence));
		}
		return FString::Join(Lines, TEXT("\n"));
	}

	UEdGraphNode* SpawnFuzzy(UEdGraph* Graph, const FNodeModificationRecord& Record, UBlueprint* Blueprint, const FContextActionMenu& Menu, float Threshold, Calvorn::FToolResult& Result)
	{
		if (!Menu.SharedCAM.IsValid())
		{
			Result.AddErrorMessage(TEXT("SharedCAM is null - internal error"));
			return nullptr;
		}

		// Everything downstream reads the best entry and the listed head of the ranking; the rest is never copied out.
		const TArray<FCamMatch> Candidates = FContextActionMenuService::SearchContextActionMenu(Record, Menu, MaxListedCandidates);
		if (Candidates.Num() == 0)
		{
			const FString Text = FString::Printf(TEXT("[Failure] Fuzzy matching found 0 matching candidates for node '%s'. Consider deterministic spawning if possible or refining the fuzzy request."), *Record.MenuTitle);
			FContextActionMenuService::ReportCandidateMatches(Candidates, Result, Text);
			return RecordFailure(Result, Text);
		}

		// Only the best-ranked entry is considered: one further down with a higher confidence shares fewer words
		// with the request, and taking it would make the ranking pointless.
		const FCamMatch& Best = Candidates[0];
		if (Threshold > Best.Confidence)
		{
			const FString Text = FString::Printf(TEXT("[Failure] No confident fuzzy match for node '%s' (best: '%s', confidence: %.2f, threshold: %.2f). Suggestions are provided (not mandatory); consider deterministic spawning if possible or refining the fuzzy request.\nTop candidates:\n%s"),
				*Record.MenuTitle, *Best.MenuTitle, Best.Confidence, Threshold, *ListCandidates(Candidates));
			FContextActionMenuService::ReportCandidateMatches(Candidates, Result, Text);
			return RecordFailure(Result, Text);
		}

		const FVector2D Position = Graph->GetGoodPlaceForNewNode();
		if (!Best.Action.IsValid())
		{
			return RecordFailure(Result, TEXT("[Failure] Matched CAM action is invalid – cannot spawn node"));
		}
		UEdGraphNode* Node = Best.Action->PerformAction(Graph, nullptr, FVector2f(static_cast<float>(Position.X), static_cast<float>(Position.Y)), true);
		if (!Node)
		{
			return RecordFailure(Result, FString::Printf(TEXT("[Failure] PerformAction returned null when spawning node.\n  Requested Node: '%s' (class: %s)\n  Matched Action: '%s' (class: %s)\n  Menu Category: '%s'\n  Confidence: %.2f\n  Target Class: '%s'\n  Position: (%.0f, %.0f)\n  Graph: '%s'\n  Possible causes:\n    - The node type is incompatible with this graph type\n    - The action requires additional context that wasn't provided\n    - The node spawner encountered an internal error\n    - Consider using deterministic spawning with target_class/target_function if applicable"),
				*Record.MenuTitle, *Record.ClassName, *Best.MenuTitle, *Best.NodeClass, *Best.MenuCategory, Best.Confidence, *Best.TargetClass, Position.X, Position.Y, *Graph->GetName()));
		}
		return FSpawnValidation::ValidateSpawnedNode(Node, Record, Graph, Blueprint, Position, Candidates, Result);
	}

	UEdGraphNode* SpawnDeterministic(UEdGraph* Graph, const FNodeModificationRecord& Record, UBlueprint* Blueprint, Calvorn::FToolResult& Result)
	{
		UEdGraphNode* Node = nullptr;
		if (!FDeterministicSpawner::TrySpawnDeterministicNode(Graph, Record, Blueprint, Result, Node))
		{
			// No fallback to the menu: a client that names class and function wants that function, and a fuzzy
			// namesake would hide its mistake.
			return RecordFailure(Result, FString::Printf(TEXT("[Failure] Deterministic spawn unavailable for %s::%s (class or function - incorrect or not found)."), *Record.TargetClass, *Record.TargetFunction));
		}
		if (!Node)
		{
			return RecordFailure(Result, TEXT("[Failure] Deterministic spawn returned null node"));
		}
		// Asked again now that the node exists, so that the next node of the batch does not land on this one.
		const FVector2D Position = Graph->GetGoodPlaceForNewNode();
		Node->NodePosX = static_cast<int32>(Position.X);
		Node->NodePosY = static_cast<int32>(Position.Y);
		return FSpawnValidation::ValidateSpawnedNode(Node, Record, Graph, Blueprint, Position, TArray<FCamMatch>(), Result);
	}
}

bool FSpawnDispatcher::IsEventRequest(const FNodeModificationRecord& Record)
{
	return Record.ClassName.Equals(TEXT("K2Node_Event"), ESearchCase::CaseSensitive)
		|| Record.ClassName.Equals(TEXT("K2Node_CustomEvent"), ESearchCase::CaseSensitive)
		|| Record.FindMetadata(TEXT("event_name")) != nullptr;
}

UEdGraphNode* FSpawnDispatcher::SpawnNode(UEdGraph* Graph, FNodeModificationRecord& Record, UBlueprint* Blueprint, const FContextActionMenu& Menu, Calvorn::FToolResult& Result, const TMap<FString, UEdGraphNode*>* SessionNodes)
{
	if (!Graph || !Blueprint)
	{
		Result.AddErrorMessage(TEXT("Invalid graph or blueprint"));
		return nullptr;
	}

	// Every way out from here is timed, failures included: slow refusals are worth seeing too.
	const FNodeLatencyScope Latency(Result, Record.RequestGuid, Record.MenuTitle);
	const float Threshold = FPopulateTelemetry::ResolveMinimumConfidence(Record);
	const bool bEventRequest = IsEventRequest(Record);

	FPopulateTelemetry::IncrementSpawnMethod(Result, bEventRequest ? FString(TEXT("deterministic_event")) : FPopulateTelemetry::ResolveSpawnMethod(Record));

	const bool bVariableClass = Record.ClassName.Equals(TEXT("K2Node_VariableGet"), ESearchCase::IgnoreCase) || Record.ClassName.Equals(TEXT("K2Node_VariableSet"), ESearchCase::IgnoreCase);
	const FString VariableName = Record.GetMetadata(TEXT("variable_name"));
	if (bVariableClass && !VariableName.IsEmpty())
	{
		return SpawnVariableNode(Graph, Record, Blueprint, VariableName, Result, SessionNodes);
	}

	if (bEventRequest)
	{
		return SpawnEventRoute(Graph, Record, Blueprint, Result);
	}

	if (Record.ClassName.Equals(TEXT("K2Node_CallParentFunction"), ESearchCase::CaseSensitive))
	{
		return SpawnParentCall(Graph, Record, Blueprint, Result);
	}

	if (!Record.TargetClass.IsEmpty() && !Record.TargetFunction.IsEmpty())
	{
		return SpawnDeterministic(Graph, Record, Blueprint, Result);
	}

	return SpawnFuzzy(Graph, Record, Blueprint, Menu, Threshold, Result);
}

UClass* FSpawnDispatcher::LoadClassQuietly(const FString& ClassPath)
{
	if (ClassPath.IsEmpty() || !FSafeAssetLoader::IsValidAssetPath(ClassPath))
	{
		return nullptr;
	}
	UClass* Class = nullptr;
	if (FSafeAssetLoader::AssetExistsInRegistry(ClassPath))
	{
		Class = Cast<UClass>(StaticLoadObject(UClass::StaticClass(), nullptr, *ClassPath));
	}
	if (!Class)
	{
		Class = Cast<UClass>(StaticFindObject(UClass::StaticClass(), nullptr, *ClassPath));
	}
	if (!Class)
	{
		FString ShortName = ClassPath;
		int32 SlashIndex = INDEX_NONE;
		if (ShortName.FindLastChar(TEXT('/'), SlashIndex))
		{
			ShortName.RightChopInline(SlashIndex + 1);
		}
		int32 DotIndex = INDEX_NONE;
		if (ShortName.FindChar(TEXT('.'), DotIndex))
		{
			ShortName.LeftInline(DotIndex);
		}
		if (!ShortName.IsEmpty() && !ShortName.Equals(ClassPath, ESearchCase::CaseSensitive))
		{
			Class = Cast<UClass>(StaticFindObject(UClass::StaticClass(), nullptr, *ShortName));
		}
	}
	return Class;
}

void FSpawnDispatcher::SuggestClassPath(const FString& ClassPath, Calvorn::FToolResult& Result)
{
	FString Suggestion;
	FString Context;

	static const FString ScriptPrefix = TEXT("/Script/");
	static const FString GamePrefix = TEXT("/Game/");
	if (ClassPath.StartsWith(ScriptPrefix))
	{
		// A "/Script/" path naming something that is no native class is often a Blueprint the client took for one.
		FString Wanted = ClassPath.RightChop(ScriptPrefix.Len());
		int32 DotIndex = INDEX_NONE;
		if (Wanted.FindChar(TEXT('.'), DotIndex))
		{
			Wanted.RightChopInline(DotIndex + 1);
		}
		if (IAssetRegistry* Registry = IAssetRegistry::Get())
		{
			TArray<FAssetData> Blueprints;
			Registry->GetAssetsByClass(UBlueprint::StaticClass()->GetStructPathName(), Blueprints, false);
			for (const FAssetData& Asset : Blueprints)
			{
				const FString AssetName = Asset.AssetName.ToString();
				if (AssetName.Equals(Wanted, ESearchCase::IgnoreCase) || AssetName.Equals(TEXT("BPFL_") + Wanted, ESearchCase::IgnoreCase) || AssetName.EndsWith(Wanted, ESearchCase::IgnoreCase))
				{
					Suggestion = Asset.GetSoftObjectPath().ToString();
					Context = FString::Printf(TEXT("Found Blueprint '%s' - use path '%s' instead of '/Script/' path"), *AssetName, *Suggestion);
					break;
				}
			}
		}
	}
	else if (ClassPath.StartsWith(GamePrefix))
	{
		// And the other way round: a native class spelt as if it were content.
		const FString BaseName = FPaths::GetBaseFilename(ClassPath.RightChop(GamePrefix.Len()));
		static const TCHAR* const Modules[] = {TEXT("Engine"), TEXT("CoreUObject"), TEXT("UMG"), TEXT("Slate"), TEXT("AIModule")};
		for (const TCHAR* Module : Modules)
		{
			const FString Candidate = FString::Printf(TEXT("/Script/%s.%s"), Module, *BaseName);
			if (LoadClassQuietly(Candidate))
			{
				Suggestion = Candidate;
				Context = FString::Printf(TEXT("Found C++ class '%s' in module '%s' - use '/Script/' path instead"), *BaseName, Module);
				break;
			}
		}
	}

	FString Text;
	if (!Suggestion.IsEmpty())
	{
		Text = FString::Printf(TEXT("[Failure] Class '%s' not found. Suggestion: Did you mean '%s'?"), *ClassPath, *Suggestion);
		FPopulateTelemetry::SetTelemetryString(Result, TEXT("class_path_suggestion"), Suggestion);
		FPopulateTelemetry::SetTelemetryString(Result, TEXT("class_path_suggestion_context"), Context);
	}
	else
	{
		Text = FString::Printf(TEXT("[Failure] Class '%s' not found. Note: Use '/Script/ModuleName.ClassName' for C++ classes or '/Game/Path/Blueprint' for Blueprint classes."), *ClassPath);
	}
	RecordFailure(Result, Text);
}
