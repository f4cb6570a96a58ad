#include "Populate/DeterministicSpawner.h"

#include "AssetRegistry/ARFilter.h"
#include "AssetRegistry/AssetData.h"
#include "AssetRegistry/AssetRegistryModule.h"
#include "AssetRegistry/IAssetRegistry.h"
#include "BlueprintFunctionNodeSpawner.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "Engine/Blueprint.h"
#include "Interfaces/IPluginManager.h"
#include "K2Node_CallFunction.h"
#include "K2Node_CommutativeAssociativeBinaryOperator.h"
#include "K2Node_DynamicCast.h"
#include "K2Node_PromotableOperator.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Modules/ModuleManager.h"
#include "Populate/GraphModificationRecords.h"
#include "Populate/PopulateTelemetry.h"
#include "ToolResult.h"
#include "UObject/Class.h"
#include "UObject/FieldIterator.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

namespace
{
	const FString MethodUnknown = TEXT("unknown");
	const FString MethodDirectPath = TEXT("direct_path");
	const FString MethodBlueprintPath = TEXT("blueprint_path");
	const FString MethodAssetRegistry = TEXT("asset_registry");
	const FString MethodReflectionSearch = TEXT("reflection_search");

	/** The failure text lists this many class spellings; the rest are only counted. */
	constexpr int32 MaxListedCandidates = 10;

	/** Script packages where a class named without a path most often lives, in the order they are tried. */
	const TCHAR* const ScriptModulesForShortNames[] = {
		TEXT("Engine"),
		TEXT("GameplayAbilities"),
		TEXT("UMG"),
		TEXT("AIModule"),
	};

	enum class EDeterministicKind : uint8
	{
		None,
		Cast,
		Function,
	};

	/** Which of the exact routes a request's class asks for; anything else is not this spawner's business. */
	EDeterministicKind ClassifyRequest(const FNodeModificationRecord& Record)
	{
		if (Record.ClassName.Equals(TEXT("K2Node_DynamicCast"), ESearchCase::IgnoreCase))
		{
			return Record.TargetClass.IsEmpty() ? EDeterministicKind::None : EDeterministicKind::Cast;
		}
		if (Record.ClassName.Equals(TEXT("K2Node_CallFunction"), ESearchCase::IgnoreCase) || Record.ClassName.Equals(TEXT("K2Node_PromotableOperator"), ESearchCase::IgnoreCase))
		{
			return (Record.TargetClass.IsEmpty() || Record.TargetFunction.IsEmpty()) ? EDeterministicKind::None : EDeterministicKind::Function;
		}
		return EDeterministicKind::None;
	}

	/** The class name without its engine prefix ("AActor" -> "Actor"); a name that merely starts with A or U keeps it. */
	FString StripEnginePrefix(const FString& ClassText)
	{
		if (ClassText.Len() >= 2 && (ClassText[0] == TEXT('A') || ClassText[0] == TEXT('U')) && FChar::IsUpper(ClassText[1]))
		{
			return ClassText.RightChop(1);
		}
		return ClassText;
	}

	/** The spellings of a class to try, in order, and the method a hit among them is reported under. */
	void BuildClassCandidates(const FString& ClassText, TArray<FString>& OutCandidates, FString& OutMethod)
	{
		const bool bGamePath = ClassText.Contains(TEXT("/Game/"), ESearchCase::IgnoreCase);
		if (bGamePath || ClassText.Contains(TEXT("/Script/"), ESearchCase::IgnoreCase))
		{
			OutCandidates.Add(ClassText);
			// A Blueprint's object path names the Blueprint; its class carries the "_C".
			if (bGamePath && !ClassText.EndsWith(TEXT("_C"), ESearchCase::IgnoreCase))
			{
				OutCandidates.Add(ClassText + TEXT("_C"));
			}
			OutMethod = bGamePath ? MethodBlueprintPath : MethodDirectPath;
		}
		else
		{
			OutCandidates.Add(ClassText);
			if (!ClassText.StartsWith(TEXT("U"), ESearchCase::IgnoreCase))
			{
				OutCandidates.Add(FString::Printf(TEXT("U%s"), *ClassText));
			}
			if (!ClassText.StartsWith(TEXT("A"), ESearchCase::IgnoreCase)
				&& (ClassText.EndsWith(TEXT("Actor"), ESearchCase::IgnoreCase) || ClassText.Contains(TEXT("Pawn"), ESearchCase::IgnoreCase)))
			{
				OutCandidates.Add(FString::Printf(TEXT("A%s"), *ClassText));
			}
			const FString ShortName = StripEnginePrefix(ClassText);
			for (const TCHAR* Module : ScriptModulesForShortNames)
			{
				OutCandidates.Add(FString::Printf(TEXT("/Script/%s.%s"), Module, *ShortName));
			}
			OutMethod = MethodDirectPath;
		}

		// A bare name may be a Blueprint at the root of a content plug-in.
		if (!ClassText.Contains(TEXT("/")))
		{
			for (const TSharedRef<IPlugin>& Plugin : IPluginManager::Get().GetEnabledPlugins())
			{
				const FString MountedPath = Plugin->GetMountedAssetPath();
				if (!Plugin->GetDescriptor().bCanContainContent || MountedPath.Len() < 1)
				{
					continue;
				}
				OutCandidates.Add(FString::Printf(TEXT("%s%s"), *MountedPath, *ClassText));
				if (!ClassText.EndsWith(TEXT("_C"), ESearchCase::IgnoreCase))
				{
					OutCandidates.Add(FString::Printf(TEXT("%s%s_C"), *MountedPath, *ClassText));
				}
			}
		}
	}

	UClass* FindOrLoadClass(const FString& Path)
	{
		if (UClass* Found = Cast<UClass>(StaticFindObject(UClass::StaticClass(), nullptr, *Path, false)))
		{
			return Found;
		}
		return Cast<UClass>(StaticLoadObject(UClass::StaticClass(), nullptr, *Path));
	}

	/** The last resort for a class of a loaded module that no spelling above names: any class of that name. */
	UClass* FindClassByReflection(const FString& ClassText)
	{
		for (const FString& Name : {ClassText, FString::Printf(TEXT("U%s"), *ClassText), FString::Printf(TEXT("A%s"), *ClassText)})
		{
			if (UClass* Found = Cast<UClass>(StaticFindFirstObject(UClass::StaticClass(), *Name, EFindFirstObjectOptions::None)))
			{
				return Found;
			}
		}
		return nullptr;
	}

	FString DescribeCandidates(const TArray<FString>& Candidates)
	{
		TArray<FString> Lines;
		for (int32 Index = 0; Index < Candidates.Num() && Index < MaxListedCandidates; ++Index)
		{
			Lines.Add(FString::Printf(TEXT("    - %s"), *Candidates[Index]));
		}
		if (Candidates.Num() > MaxListedCandidates)
		{
			Lines.Add(FString::Printf(TEXT("    ... and %d more variants"), Candidates.Num() - MaxListedCandidates));
		}
		return FString::Join(Lines, TEXT("\n"));
	}

	/** A failure that means our own code or the editor misbehaved: it fails the whole call, not just the node. */
	void ReportInternalFault(Calvorn::FToolResult& Result, const FString& Text)
	{
		FPopulateTelemetry::RecordValidationFailure(Result, Text);
		Result.AddErrorMessage(Text);
	}

	/** Takes a refused node out again, so that a failure leaves the graph as it was. */
	void DiscardNode(UEdGraph* Graph, UEdGraphNode* Node)
	{
		if (Graph && Node)
		{
			Graph->RemoveNode(Node, true);
		}
	}

	bool SpawnCastNode(UEdGraph* Graph, const FNodeModificationRecord& Record, UClass* Class, const FString& ResolvedPath, Calvorn::FToolResult& Result, UEdGraphNode*& OutNode)
	{
		Graph->Modify();
		UK2Node_DynamicCast* CastNode = NewObject<UK2Node_DynamicCast>(Graph);
		if (!CastNode)
		{
			ReportInternalFault(Result, FString::Printf(TEXT("Deterministic spawn failed: Could not create K2Node_DynamicCast.\n  Target Class: %s\n  Resolved Class Path: '%s'\n  Graph: '%s'\n  Possible causes:\n    - Memory allocation failure (rare)\n    - Graph context is invalid\n    - K2Node_DynamicCast is not available in this UE version/configuration"),
				*Record.TargetClass, *ResolvedPath, *Graph->GetName()));
			return false;
		}

		CastNode->TargetType = Class;
		// Clients address nodes by guid in later calls, so the node gets its own before its pins are made.
		CastNode->CreateNewGuid();
		CastNode->AllocateDefaultPins();
		const FVector2D Position = Graph->GetGoodPlaceForNewNode();
		CastNode->NodePosX = static_cast<int32>(Position.X);
		CastNode->NodePosY = static_cast<int32>(Position.Y);
		Graph->AddNode(CastNode, false, false);

		if (!CastNode->TargetType.Get())
		{
			DiscardNode(Graph, CastNode);
			ReportInternalFault(Result, FString::Printf(TEXT("Deterministic spawn failed: Cast node TargetType is null after creation.\n  Target Class: %s\n  Resolved Class Path: '%s'\n  FunctionClass Valid: %s\n  Graph: '%s'\n  Possible causes:\n    - The target class was unloaded after resolution\n    - The class is abstract or cannot be cast to\n    - Graph schema restrictions prevent cast to this type"),
				*Record.TargetClass, *ResolvedPath, Class ? TEXT("true") : TEXT("false"), *Graph->GetName()));
			return false;
		}

		OutNode = CastNode;
		return true;
	}

	/** The display names of the functions of Class (and its parents) called FunctionName, for an overload hint. */
	TArray<FString> CollectOverloadNames(UClass* Class, const FString& FunctionName)
	{
		TArray<FString> Names;
		for (TFieldIterator<UFunction> It(Class, EFieldIteratorFlags::IncludeSuper, EFieldIteratorFlags::IncludeDeprecated, EFieldIteratorFlags::ExcludeInterfaces); It; ++It)
		{
			const UFunction* Function = *It;
			if (!Function->GetName().Equals(FunctionName, ESearchCase::IgnoreCase))
			{
				continue;
			}
			const FString DisplayName = Function->GetDisplayNameText().ToString();
			Names.Add(DisplayName.IsEmpty() ? Function->GetName() : DisplayName);
		}
		return Names;
	}

	bool SpawnFunctionNode(UEdGraph* Graph, const FNodeModificationRecord& Record, UClass* Class, const FString& ResolvedPath, Calvorn::FToolResult& Result, UEdGraphNode*& OutNode)
	{
		UFunction* Function = nullptr;
		bool bFound = FDeterministicSpawner::FindFunctionWithOverloadHandling(Class, Record.TargetFunction, Record.MenuTitle, Function);
		if (!bFound)
		{
			// A Blueprint's members since its last compile (a custom event placed earlier in this very request)
			// exist on its skeleton class only; the editor offers them from there, and so do we.
			const UBlueprint* OwnerBlueprint = Cast<UBlueprint>(Class->ClassGeneratedBy);
			UClass* Skeleton = OwnerBlueprint ? OwnerBlueprint->SkeletonGeneratedClass.Get() : nullptr;
			if (Skeleton && Skeleton != Class)
			{
				bFound = FDeterministicSpawner::FindFunctionWithOverloadHandling(Skeleton, Record.TargetFunction, Record.MenuTitle, Function);
			}
		}
		if (!bFound)
		{
			FPopulateTelemetry::RecordValidationFailure(Result, FString::Printf(TEXT("Deterministic spawn failed: Function '%s' not found in class '%s' (or overloads exist without menu_title). Returning failure to caller."),
				*Record.TargetFunction, *ResolvedPath));
			return false;
		}
		if (!Function)
		{
			FPopulateTelemetry::RecordValidationFailure(Result, FString::Printf(TEXT("Deterministic spawn failed: Function lookup returned null (unexpected - this should not happen).\n  Requested Function: %s::%s\n  Resolved Class: '%s'\n  Menu Title: '%s'\n  This is an internal consistency error. FindFunctionWithOverloadHandling returned success but Function is null."),
				*Record.TargetClass, *Record.TargetFunction, *ResolvedPath, *Record.MenuTitle));
			return false;
		}

		const FString DisplayName = Function->GetDisplayNameText().ToString();
		UBlueprintFunctionNodeSpawner* Spawner = UBlueprintFunctionNodeSpawner::Create(Function, nullptr);
		if (!Spawner)
		{
			const UClass* OwnerClass = Function->GetOwnerClass();
			ReportInternalFault(Result, FString::Printf(TEXT("Deterministic spawn failed: Could not create UBlueprintFunctionNodeSpawner.\n  Function: %s::%s\n  Display Name: '%s'\n  Menu Title (requested): '%s'\n  Function Valid: %s\n  Function Flags: 0x%08X\n  Owning Class: %s\n  Possible causes:\n    - The function is deprecated or hidden from Blueprints\n    - Function flags prevent Blueprint usage (check FUNC_BlueprintCallable)\n    - UBlueprintFunctionNodeSpawner::Create internal validation failed\n    - The function is not compatible with Blueprint node spawning"),
				*Record.TargetClass, *Record.TargetFunction, *DisplayName, *Record.MenuTitle, IsValid(Function) ? TEXT("true") : TEXT("false"),
				static_cast<uint32>(Function->FunctionFlags), OwnerClass ? *OwnerClass->GetName() : TEXT("null")));
			return false;
		}

		const FVector2D Position = Graph->GetGoodPlaceForNewNode();
		UEdGraphNode* Node = Spawner->Invoke(Graph, IBlueprintNodeBinder::FBindingSet(), Position);
		if (!Node)
		{
			ReportInternalFault(Result, FString::Printf(TEXT("Deterministic spawn failed: Spawner->Invoke returned null.\n  Function: %s::%s\n  Display Name: '%s'\n  Menu Title (requested): '%s'\n  Graph: '%s'\n  Position: (%.0f, %.0f)\n  Spawner Type: %s\n  Possible causes:\n    - The node type is incompatible with this graph context\n    - The function signature is invalid or unsupported\n    - The spawner encountered an internal error during node creation\n    - Graph schema restrictions prevent this node type\n    - Try spawning via fuzzy matching (omit target_class/target_function) as fallback"),
				*Record.TargetClass, *Record.TargetFunction, *DisplayName, *Record.MenuTitle, *Graph->GetName(), Position.X, Position.Y, *Spawner->GetClass()->GetName()));
			return false;
		}

		// Promotable and commutative operators are call nodes too; anything else is not what was asked for.
		UK2Node_CallFunction* CallNode = Cast<UK2Node_CallFunction>(Node);
		if (!CallNode)
		{
			const FString NodeClassName = Node->GetClass()->GetName();
			DiscardNode(Graph, Node);
			FPopulateTelemetry::RecordValidationFailure(Result, FString::Printf(TEXT("Deterministic spawn failed: Unsupported node class '%s' for %s::%s"),
				*NodeClassName, *Record.TargetClass, *Record.TargetFunction));
			return false;
		}

		const UBlueprint* NodeBlueprint = FBlueprintEditorUtils::FindBlueprintForNode(Node);
		UClass* SelfScope = NodeBlueprint ? NodeBlueprint->SkeletonGeneratedClass.Get() : nullptr;
		const UFunction* Bound = CallNode->FunctionReference.ResolveMemberFunction(SelfScope);
		if (!Bound)
		{
			const FString NodeClassName = Node->GetClass()->GetName();
			DiscardNode(Graph, Node);
			FPopulateTelemetry::RecordValidationFailure(Result, FString::Printf(TEXT("Deterministic spawn failed: Could not resolve function reference on node class '%s'"), *NodeClassName));
			return false;
		}

		// Operator nodes choose their concrete function by their own rules ("Greater_IntInt" may arrive as
		// another comparison), so what they bound is theirs to decide.
		if (Node->IsA<UK2Node_PromotableOperator>() || Node->IsA<UK2Node_CommutativeAssociativeBinaryOperator>() || Bound == Function)
		{
			OutNode = Node;
			return true;
		}

		// A Blueprint's function is seen through its skeleton class while editing and through its generated
		// class elsewhere: two objects, one function.
		const UClass* BoundOwner = Bound->GetOwnerClass();
		const UClass* RequestedOwner = Function->GetOwnerClass();
		if (BoundOwner && RequestedOwner && BoundOwner->ClassGeneratedBy && RequestedOwner->ClassGeneratedBy && Bound->GetName().Equals(Function->GetName(), ESearchCase::IgnoreCase))
		{
			FPopulateTelemetry::IncrementCounter(Result, TEXT("pointer_mismatch_allowed"));
			OutNode = Node;
			return true;
		}

		const FString BoundName = Bound->GetName();
		DiscardNode(Graph, Node);
		if (Record.MenuTitle.IsEmpty() && Class)
		{
			const TArray<FString> Overloads = CollectOverloadNames(Class, Record.TargetFunction);
			if (Overloads.Num() >= 2)
			{
				FPopulateTelemetry::RecordValidationFailure(Result, FString::Printf(TEXT("Overloaded function '%s::%s' spawned without menu_title. Consider adding menu_title for accuracy. Available: %s"),
					*Class->GetName(), *Record.TargetFunction, *FString::Join(Overloads, TEXT(", "))));
			}
		}
		FPopulateTelemetry::RecordValidationFailure(Result, FString::Printf(TEXT("Deterministic spawn returned different function '%s' (requested '%s'). Returning failure to caller."),
			*BoundName, *Function->GetName()));
		return false;
	}
}

bool FDeterministicSpawner::TrySpawnDeterministicNode(UEdGraph* Graph, const FNodeModificationRecord& Record, UBlueprint* Blueprint, Calvorn::FToolResult& Result, UEdGraphNode*& OutNode)
{
	OutNode = nullptr;
	const EDeterministicKind Kind = ClassifyRequest(Record);
	if (Kind == EDeterministicKind::None)
	{
		return false;
	}
	if (!Graph)
	{
		FPopulateTelemetry::RecordValidationFailure(Result, FString::Printf(TEXT("Deterministic spawn failed: no graph to place %s::%s in"), *Record.TargetClass, *Record.TargetFunction));
		return false;
	}

	FString Method;
	FString ResolvedPath;
	FString AmbiguityError;
	TArray<FString> Candidates;
	UClass* Class = ResolveClass(Record.TargetClass, Method, ResolvedPath, Candidates, AmbiguityError);
	if (!Class)
	{
		if (!AmbiguityError.IsEmpty())
		{
			FPopulateTelemetry::RecordValidationFailure(Result, AmbiguityError);
			return false;
		}
		FPopulateTelemetry::RecordValidationFailure(Result, FString::Printf(TEXT("Deterministic spawn failed: Class '%s' not found.\n  Node Type: %s\n  Target Function: %s\n  Attempted class resolution paths (showing up to 10):\n%s\n  Asset Registry: No Blueprint matches found\n  Possible solutions:\n    - Verify the class name is spelled correctly\n    - Use full package path (e.g., /Game/MyFolder/BP_MyClass or /Script/Engine.Actor)\n    - Check if the class/Blueprint exists and is loaded\n    - For C++ classes, ensure the module is loaded\n    - Try fuzzy matching by omitting target_class/target_function"),
			*Record.TargetClass, *Record.ClassName, *Record.TargetFunction, *DescribeCandidates(Candidates)));
		return false;
	}

	FPopulateTelemetry::SetTelemetryString(Result, FString::Printf(TEXT("class_resolution_method_%s"), *Record.RequestGuid), Method);
	if (!ResolvedPath.IsEmpty())
	{
		FPopulateTelemetry::SetTelemetryString(Result, TEXT("resolved_class_path"), ResolvedPath);
		FPopulateTelemetry::SetTelemetryString(Result, TEXT("original_class_input"), Record.TargetClass);
	}
	if (Method == MethodAssetRegistry)
	{
		FPopulateTelemetry::IncrementCounter(Result, TEXT("asset_registry_lookups"));
	}

	if (Kind == EDeterministicKind::Cast)
	{
		return SpawnCastNode(Graph, Record, Class, ResolvedPath, Result, OutNode);
	}
	return SpawnFunctionNode(Graph, Record, Class, ResolvedPath, Result, OutNode);
}

UClass* FDeterministicSpawner::ResolveClass(const FString& ClassText, FString& OutMethod, FString& OutResolvedPath, TArray<FString>& OutCandidates, FString& OutError)
{
	OutMethod = MethodUnknown;
	OutResolvedPath.Empty();
	OutCandidates.Empty();
	OutError.Empty();
	if (ClassText.IsEmpty())
	{
		return nullptr;
	}

	BuildClassCandidates(ClassText, OutCandidates, OutMethod);
	for (const FString& Candidate : OutCandidates)
	{
		if (UClass* Found = FindOrLoadClass(Candidate))
		{
			OutResolvedPath = Candidate;
			return Found;
		}
	}

	FString RegistryPath;
	if (UClass* Found = FindBlueprintClassByName(ClassText, RegistryPath, OutError))
	{
		OutMethod = MethodAssetRegistry;
		OutResolvedPath = RegistryPath;
		return Found;
	}
	if (!OutError.IsEmpty())
	{
		// Several Blueprints answer to the name: guessing one would wire the wrong class.
		return nullptr;
	}

	if (UClass* Found = FindClassByReflection(ClassText))
	{
		if (OutMethod == MethodUnknown)
		{
			OutMethod = MethodReflectionSearch;
		}
		return Found;
	}
	return nullptr;
}

UClass* FDeterministicSpawner::FindBlueprintClassByName(const FString& Name, FString& OutResolvedPath, FString& OutError)
{
	OutResolvedPath.Empty();
	OutError.Empty();
	if (Name.IsEmpty())
	{
		return nullptr;
	}

	IAssetRegistry& Registry = FModuleManager::LoadModuleChecked<FAssetRegistryModule>(TEXT("AssetRegistry")).Get();
	FARFilter Filter;
	Filter.ClassPaths.Add(UBlueprint::StaticClass()->GetStructPathName());
	Filter.bRecursivePaths = true;
	Filter.bRecursiveClasses = false;
	TArray<FAssetData> Assets;
	Registry.GetAssets(Filter, Assets, true);

	const bool bIsPath = Name.Contains(TEXT("/"));
	FString SearchName = Name;
	if (bIsPath)
	{
		int32 SlashIndex = INDEX_NONE;
		Name.FindLastChar(TEXT('/'), SlashIndex);
		SearchName = Name.RightChop(SlashIndex + 1);
		if (SearchName.EndsWith(TEXT("_C"), ESearchCase::IgnoreCase))
		{
			SearchName.LeftChopInline(2);
		}
		int32 DotIndex = INDEX_NONE;
		if (SearchName.FindChar(TEXT('.'), DotIndex))
		{
			SearchName = SearchName.Left(DotIndex);
		}
	}

	TArray<const FAssetData*> Matches;
	for (const FAssetData& Asset : Assets)
	{
		const bool bNameMatches = Asset.AssetName.ToString().Equals(SearchName, ESearchCase::IgnoreCase);
		const bool bPackageMatches = bIsPath && Asset.PackageName.ToString().Contains(Name, ESearchCase::IgnoreCase);
		if (bNameMatches || bPackageMatches)
		{
			Matches.Add(&Asset);
		}
	}

	if (Matches.Num() == 0)
	{
		return nullptr;
	}
	if (Matches.Num() > 1)
	{
		TArray<FString> PackageNames;
		for (const FAssetData* Match : Matches)
		{
			PackageNames.Add(Match->PackageName.ToString());
		}
		OutError = FString::Printf(TEXT("Ambiguous Blueprint name '%s'. Found %d matches: %s. Use full package path."), *Name, Matches.Num(), *FString::Join(PackageNames, TEXT(", ")));
		return nullptr;
	}

	const FAssetData& Match = *Matches[0];
	UObject* Asset = Match.FastGetAsset(false);
	if (!Asset)
	{
		if (UPackage* Package = LoadPackage(nullptr, *Match.PackageName.ToString(), LOAD_None))
		{
			Asset = StaticFindObjectFast(UObject::StaticClass(), Package, Match.AssetName);
		}
	}
	const UBlueprint* Blueprint = Cast<UBlueprint>(Asset);
	if (!Blueprint || !Blueprint->GeneratedClass.Get())
	{
		return nullptr;
	}
	UClass* GeneratedClass = Blueprint->GeneratedClass.Get();
	OutResolvedPath = GeneratedClass->GetPathName();
	return GeneratedClass;
}

bool FDeterministicSpawner::FindFunctionWithOverloadHandling(UClass* Class, const FString& FunctionName, const FString& MenuTitle, UFunction*& OutFunction)
{
	OutFunction = nullptr;
	if (!Class || FunctionName.IsEmpty())
	{
		return false;
	}

	TArray<UFunction*> Candidates;
	for (TFieldIterator<UFunction> It(Class, EFieldIteratorFlags::IncludeSuper, EFieldIteratorFlags::IncludeDeprecated, EFieldIteratorFlags::ExcludeInterfaces); It; ++It)
	{
		if (It->GetName().Equals(FunctionName, ESearchCase::IgnoreCase))
		{
			Candidates.Add(*It);
		}
	}

	if (Candidates.Num() == 0)
	{
		return false;
	}
	if (Candidates.Num() == 1)
	{
		OutFunction = Candidates[0];
		return true;
	}
	// Several functions answer to the name: only the title a client read in the menu tells them apart, and a
	// wrong title must not quietly give the first one.
	if (MenuTitle.IsEmpty())
	{
		return false;
	}
	for (UFunction* Candidate : Candidates)
	{
		if (Candidate->GetDisplayNameText().ToString().Equals(MenuTitle, ESearchCase::IgnoreCase))
		{
			OutFunction = Candidate;
			return true;
		}
	}
	return false;
}
