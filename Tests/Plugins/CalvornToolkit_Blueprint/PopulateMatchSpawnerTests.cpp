#include "PopulateMatchTestSupport.h"

#include "K2Node_CallFunction.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_DynamicCast.h"
#include "K2Node_PromotableOperator.h"
#include "Populate/DeterministicSpawner.h"
#include "UObject/Class.h"

using namespace PopulateMatchTests;

namespace
{
	/**
	 * Two classes that both declare "Compute": the parent's shows as "Compute Float", the child's as "Compute
	 * Int". Reflection walks the child's own function first, then its parent's. Made once per process, as
	 * compiled-in classes are.
	 */
	struct FOverloadClasses
	{
		UClass* Base = nullptr;
		UClass* Child = nullptr;
		UFunction* BaseCompute = nullptr;
		UFunction* ChildCompute = nullptr;
	};

	UFunction* AddStaticFunction(UClass* Owner, const TCHAR* Name, const TCHAR* DisplayName)
	{
		UFunction* Function = NewObject<UFunction>(Owner, Name, RF_Public | RF_Transient | RF_MarkAsNative);
		Function->FunctionFlags = FUNC_Native | FUNC_Public | FUNC_BlueprintCallable | FUNC_Static;
		Function->SetMetaData(TEXT("DisplayName"), DisplayName);
		Function->SetMetaData(TEXT("Category"), TEXT("Match"));
		Function->Bind();
		Function->StaticLink(true);
		Owner->AddFunctionToFunctionMap(Function, Function->GetFName());
		Function->Next = Owner->Children;
		Owner->Children = Function;
		return Function;
	}

	UClass* MakeClass(UPackage* Package, const TCHAR* Name, UClass* Parent)
	{
		UClass* Class = NewObject<UClass>(Package, Name, RF_Public | RF_Transient | RF_MarkAsNative);
		Class->SetSuperStruct(Parent);
		Class->ClassFlags |= CLASS_Native;
		Class->ClassCastFlags |= Parent->ClassCastFlags;
		Class->SetMetaData(TEXT("BlueprintType"), TEXT("true"));
		return Class;
	}

	const FOverloadClasses& GetOverloadClasses()
	{
		static FOverloadClasses Classes = []
		{
			FOverloadClasses Made;
			UPackage* Package = CreatePackage(TEXT("/Script/PopulateMatchOverloads"));
			Package->AddToRoot();
			Made.Base = MakeClass(Package, TEXT("MatchOverloadBase"), UObject::StaticClass());
			Made.BaseCompute = AddStaticFunction(Made.Base, TEXT("Compute"), TEXT("Compute Float"));
			Made.Base->Bind();
			Made.Base->StaticLink(true);
			Made.Child = MakeClass(Package, TEXT("MatchOverloadChild"), Made.Base);
			Made.ChildCompute = AddStaticFunction(Made.Child, TEXT("Compute"), TEXT("Compute Int"));
			AddStaticFunction(Made.Child, TEXT("Describe"), TEXT("Describe"));
			Made.Child->Bind();
			Made.Child->StaticLink(true);
			for (UObject* Object : {static_cast<UObject*>(Made.Base), static_cast<UObject*>(Made.Child)})
			{
				Object->AddToRoot();
			}
			return Made;
		}();
		return Classes;
	}

	class PopulateMatchSpawner : public FMatchFixture
	{
	protected:
		PopulateMatchSpawner()
		{
			Host = MakeActorBlueprint(TEXT("/Game/Match/BP_Host"));
			Graph = EventGraphOf(Host);
			Door = MakeActorBlueprint(TEXT("/Game/Match/BP_MatchDoor"));
			Gadget = MakeActorBlueprint(TEXT("/MatchKit/BP_KitGadget"));
		}

		bool Spawn(const FNodeModificationRecord& Record, Calvorn::FToolResult& Result, UEdGraphNode*& OutNode)
		{
			return FDeterministicSpawner::TrySpawnDeterministicNode(Graph, Record, Host, Result, OutNode);
		}

		UBlueprint* Host = nullptr;
		UEdGraph* Graph = nullptr;
		UBlueprint* Door = nullptr;
		UBlueprint* Gadget = nullptr;
	};

	struct FResolveCase
	{
		const TCHAR* Input;
		const TCHAR* ExpectedClassPath;
		const char* ExpectedMethod;
		const char* ExpectedResolvedPath;
	};
}

TEST_F(PopulateMatchSpawner, EverySpellingOfAClassResolvesWithItsMethod)
{
	const FResolveCase Cases[] = {
		{TEXT("Actor"), TEXT("/Script/Engine.Actor"), "direct_path", "/Script/Engine.Actor"},
		{TEXT("AActor"), TEXT("/Script/Engine.Actor"), "direct_path", "/Script/Engine.Actor"},
		{TEXT("actor"), TEXT("/Script/Engine.Actor"), "direct_path", "/Script/Engine.actor"},
		{TEXT("/Script/Engine.Actor"), TEXT("/Script/Engine.Actor"), "direct_path", "/Script/Engine.Actor"},
		{TEXT("Pawn"), TEXT("/Script/Engine.Pawn"), "direct_path", "/Script/Engine.Pawn"},
		{TEXT("KismetSystemLibrary"), TEXT("/Script/Engine.KismetSystemLibrary"), "direct_path", "/Script/Engine.KismetSystemLibrary"},
		{TEXT("UKismetSystemLibrary"), TEXT("/Script/Engine.KismetSystemLibrary"), "direct_path", "/Script/Engine.KismetSystemLibrary"},
		{TEXT("/Script/Engine.KismetMathLibrary"), TEXT("/Script/Engine.KismetMathLibrary"), "direct_path", "/Script/Engine.KismetMathLibrary"},
		// A Blueprint's object path names the Blueprint; the "_C" candidate finds its class.
		{TEXT("/Game/Match/BP_MatchDoor.BP_MatchDoor"), TEXT("/Game/Match/BP_MatchDoor.BP_MatchDoor_C"), "blueprint_path", "/Game/Match/BP_MatchDoor.BP_MatchDoor_C"},
		{TEXT("/Game/Match/BP_MatchDoor.BP_MatchDoor_C"), TEXT("/Game/Match/BP_MatchDoor.BP_MatchDoor_C"), "blueprint_path", "/Game/Match/BP_MatchDoor.BP_MatchDoor_C"},
		// A package path or a bare name goes to the asset registry.
		{TEXT("/Game/Match/BP_MatchDoor"), TEXT("/Game/Match/BP_MatchDoor.BP_MatchDoor_C"), "asset_registry", "/Game/Match/BP_MatchDoor.BP_MatchDoor_C"},
		{TEXT("/Game/Match/BP_MatchDoor_C"), TEXT("/Game/Match/BP_MatchDoor.BP_MatchDoor_C"), "asset_registry", "/Game/Match/BP_MatchDoor.BP_MatchDoor_C"},
		{TEXT("BP_MatchDoor"), TEXT("/Game/Match/BP_MatchDoor.BP_MatchDoor_C"), "asset_registry", "/Game/Match/BP_MatchDoor.BP_MatchDoor_C"},
		{TEXT("bp_matchdoor"), TEXT("/Game/Match/BP_MatchDoor.BP_MatchDoor_C"), "asset_registry", "/Game/Match/BP_MatchDoor.BP_MatchDoor_C"},
		{TEXT("BP_KitGadget"), TEXT("/MatchKit/BP_KitGadget.BP_KitGadget_C"), "asset_registry", "/MatchKit/BP_KitGadget.BP_KitGadget_C"},
		// The content plug-in's root makes an object path of a name that holds no folder.
		{TEXT("BP_KitGadget.BP_KitGadget_C"), TEXT("/MatchKit/BP_KitGadget.BP_KitGadget_C"), "direct_path", "/MatchKit/BP_KitGadget.BP_KitGadget_C"},
		// A bare class name is searched in the registry as it stands and found by reflection, reported under
		// the method the spellings set.
		{TEXT("BP_MatchDoor_C"), TEXT("/Game/Match/BP_MatchDoor.BP_MatchDoor_C"), "direct_path", ""},
		{TEXT("MatchOverloadChild"), TEXT("/Script/PopulateMatchOverloads.MatchOverloadChild"), "direct_path", ""},
	};
	GetOverloadClasses();

	for (const FResolveCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Input));
		FString Method;
		FString ResolvedPath;
		FString Error;
		TArray<FString> Candidates;
		UClass* Class = FDeterministicSpawner::ResolveClass(Case.Input, Method, ResolvedPath, Candidates, Error);
		ASSERT_NE(Class, nullptr);
		EXPECT_EQ(U8(Class->GetPathName()), U8(Case.ExpectedClassPath));
		EXPECT_EQ(U8(Method), Case.ExpectedMethod);
		EXPECT_EQ(U8(ResolvedPath), Case.ExpectedResolvedPath);
		EXPECT_TRUE(Error.IsEmpty());
	}
}

TEST_F(PopulateMatchSpawner, ABareNameTriesTheRootOfEveryContentPlugin)
{
	FString Method;
	FString ResolvedPath;
	FString Error;
	TArray<FString> Candidates;
	FDeterministicSpawner::ResolveClass(TEXT("GadgetActor"), Method, ResolvedPath, Candidates, Error);
	const std::vector<std::string> Expected = {
		"GadgetActor",
		"UGadgetActor",
		"AGadgetActor",
		"/Script/Engine.GadgetActor",
		"/Script/GameplayAbilities.GadgetActor",
		"/Script/UMG.GadgetActor",
		"/Script/AIModule.GadgetActor",
		"/MatchKit/GadgetActor",
		"/MatchKit/GadgetActor_C",
		"/MatchTools/GadgetActor",
		"/MatchTools/GadgetActor_C",
	};
	std::vector<std::string> Actual;
	for (const FString& Candidate : Candidates)
	{
		Actual.push_back(U8(Candidate));
	}
	EXPECT_EQ(Actual, Expected);

	// A path never gets plug-in roots; an engine prefix is dropped only before a capital letter.
	FDeterministicSpawner::ResolveClass(TEXT("/Game/Nowhere/BP_None"), Method, ResolvedPath, Candidates, Error);
	EXPECT_EQ(Candidates, TArray<FString>({TEXT("/Game/Nowhere/BP_None"), TEXT("/Game/Nowhere/BP_None_C")}));
	EXPECT_EQ(U8(Method), "blueprint_path");
	FDeterministicSpawner::ResolveClass(TEXT("Umbrella_C"), Method, ResolvedPath, Candidates, Error);
	ASSERT_GE(Candidates.Num(), 6);
	EXPECT_EQ(Candidates[1], TEXT("/Script/Engine.Umbrella_C"));
	EXPECT_EQ(Candidates.Last(), TEXT("/MatchTools/Umbrella_C"));
}

TEST_F(PopulateMatchSpawner, AnAmbiguousBlueprintNameIsRefusedWithItsPackages)
{
	MakeActorBlueprint(TEXT("/Game/Match/A/BP_Twin"));
	MakeActorBlueprint(TEXT("/Game/Match/B/BP_Twin"));
	const std::string Expected = "Ambiguous Blueprint name 'BP_Twin'. Found 2 matches: /Game/Match/A/BP_Twin, /Game/Match/B/BP_Twin. Use full package path.";

	FString Path;
	FString Error;
	EXPECT_EQ(FDeterministicSpawner::FindBlueprintClassByName(TEXT("BP_Twin"), Path, Error), nullptr);
	EXPECT_EQ(U8(Error), Expected);
	EXPECT_TRUE(Path.IsEmpty());

	Calvorn::FToolResult Result;
	UEdGraphNode* Node = nullptr;
	const int32 NodesBefore = Graph->Nodes.Num();
	EXPECT_FALSE(Spawn(MakeRecord(TEXT("twin"), TEXT("K2Node_DynamicCast"), TEXT(""), TEXT("BP_Twin"), TEXT("Unused")), Result, Node));
	EXPECT_EQ(Node, nullptr);
	EXPECT_EQ(ValidationFailures(Result), std::vector<std::string>({Expected}));
	EXPECT_EQ(Graph->Nodes.Num(), NodesBefore);

	// The registry matches a path by its last name too, so the package path of one twin stays ambiguous there;
	// its object path resolves before the registry is asked.
	EXPECT_EQ(FDeterministicSpawner::FindBlueprintClassByName(TEXT("/Game/Match/B/BP_Twin"), Path, Error), nullptr);
	EXPECT_EQ(U8(Error), "Ambiguous Blueprint name '/Game/Match/B/BP_Twin'. Found 2 matches: /Game/Match/A/BP_Twin, /Game/Match/B/BP_Twin. Use full package path.");
	FString Method;
	TArray<FString> Candidates;
	UClass* Twin = FDeterministicSpawner::ResolveClass(TEXT("/Game/Match/B/BP_Twin.BP_Twin"), Method, Path, Candidates, Error);
	ASSERT_NE(Twin, nullptr);
	EXPECT_EQ(U8(Twin->GetPathName()), "/Game/Match/B/BP_Twin.BP_Twin_C");
	EXPECT_EQ(U8(Method), "blueprint_path");
	EXPECT_TRUE(Error.IsEmpty());
	EXPECT_EQ(FDeterministicSpawner::FindBlueprintClassByName(TEXT(""), Path, Error), nullptr);
	EXPECT_EQ(FDeterministicSpawner::FindBlueprintClassByName(TEXT("BP_Nobody"), Path, Error), nullptr);
	EXPECT_TRUE(Error.IsEmpty());
}

TEST_F(PopulateMatchSpawner, AnUnknownClassListsTenOfTheSpellingsTried)
{
	Calvorn::FToolResult Result;
	UEdGraphNode* Node = nullptr;
	EXPECT_FALSE(Spawn(MakeRecord(TEXT("ghost"), TEXT("K2Node_CallFunction"), TEXT(""), TEXT("GhostActor"), TEXT("Haunt")), Result, Node));
	EXPECT_EQ(Node, nullptr);
	const std::string Expected =
		"Deterministic spawn failed: Class 'GhostActor' not found.\n"
		"  Node Type: K2Node_CallFunction\n"
		"  Target Function: Haunt\n"
		"  Attempted class resolution paths (showing up to 10):\n"
		"    - GhostActor\n"
		"    - UGhostActor\n"
		"    - AGhostActor\n"
		"    - /Script/Engine.GhostActor\n"
		"    - /Script/GameplayAbilities.GhostActor\n"
		"    - /Script/UMG.GhostActor\n"
		"    - /Script/AIModule.GhostActor\n"
		"    - /MatchKit/GhostActor\n"
		"    - /MatchKit/GhostActor_C\n"
		"    - /MatchTools/GhostActor\n"
		"    ... and 1 more variants\n"
		"  Asset Registry: No Blueprint matches found\n"
		"  Possible solutions:\n"
		"    - Verify the class name is spelled correctly\n"
		"    - Use full package path (e.g., /Game/MyFolder/BP_MyClass or /Script/Engine.Actor)\n"
		"    - Check if the class/Blueprint exists and is loaded\n"
		"    - For C++ classes, ensure the module is loaded\n"
		"    - Try fuzzy matching by omitting target_class/target_function";
	EXPECT_EQ(ValidationFailures(Result), std::vector<std::string>({Expected}));
	// An unknown class is the node's failure, not the call's.
	EXPECT_TRUE(Result.GetErrorMessages().IsEmpty());
	EXPECT_TRUE(Result.GetWarningMessages().IsEmpty());
	EXPECT_EQ(TelemetryString(Result, TEXT("class_resolution_method_ghost")), "<absent>");
}

TEST_F(PopulateMatchSpawner, RequestsThatAreNotExactAreLeftAloneSilently)
{
	const FNodeModificationRecord Records[] = {
		MakeRecord(TEXT("a"), TEXT("K2Node_CommutativeAssociativeBinaryOperator"), TEXT(""), TEXT("KismetMathLibrary"), TEXT("Add_IntInt")),
		MakeRecord(TEXT("b"), TEXT("K2Node_IfThenElse"), TEXT("Branch"), TEXT("KismetSystemLibrary"), TEXT("PrintString")),
		MakeRecord(TEXT("c"), TEXT("K2Node_CallFunction"), TEXT("Print String"), TEXT("KismetSystemLibrary"), TEXT("")),
		MakeRecord(TEXT("d"), TEXT("K2Node_PromotableOperator"), TEXT(""), TEXT(""), TEXT("Greater_IntInt")),
		MakeRecord(TEXT("e"), TEXT("K2Node_DynamicCast"), TEXT("Cast To Pawn"), TEXT(""), TEXT("Unused")),
		MakeRecord(TEXT("f"), TEXT(""), TEXT("Print String"), TEXT("KismetSystemLibrary"), TEXT("PrintString")),
	};
	for (const FNodeModificationRecord& Record : Records)
	{
		SCOPED_TRACE(U8(Record.RequestGuid));
		Calvorn::FToolResult Result;
		UEdGraphNode* Node = reinterpret_cast<UEdGraphNode*>(&Result);
		const int32 NodesBefore = Graph->Nodes.Num();
		EXPECT_FALSE(Spawn(Record, Result, Node));
		EXPECT_EQ(Node, nullptr);
		EXPECT_FALSE(Telemetry(Result).IsValid());
		EXPECT_TRUE(Result.GetErrorMessages().IsEmpty());
		EXPECT_TRUE(Result.GetWarningMessages().IsEmpty());
		EXPECT_EQ(Graph->Nodes.Num(), NodesBefore);
	}
}

TEST_F(PopulateMatchSpawner, AFunctionCallIsPlacedAndItsResolutionRecorded)
{
	Calvorn::FToolResult Result;
	UEdGraphNode* Node = nullptr;
	const FVector2D Place = Graph->GetGoodPlaceForNewNode();
	ASSERT_TRUE(Spawn(MakeRecord(TEXT("print"), TEXT("k2node_callfunction"), TEXT("Whatever the title says"), TEXT("KismetSystemLibrary"), TEXT("printstring")), Result, Node))
		<< Join(ValidationFailures(Result));
	UK2Node_CallFunction* Call = Cast<UK2Node_CallFunction>(Node);
	ASSERT_NE(Call, nullptr);
	EXPECT_EQ(Call->GetTargetFunction(), FindClass(TEXT("/Script/Engine.KismetSystemLibrary"))->FindFunctionByName(TEXT("PrintString")));
	EXPECT_TRUE(Graph->Nodes.Contains(Node));
	EXPECT_TRUE(Node->NodeGuid.IsValid());
	EXPECT_EQ(Node->NodePosX, int32(Place.X));
	EXPECT_EQ(Node->NodePosY, int32(Place.Y));
	EXPECT_NE(Node->FindPin(TEXT("InString")), nullptr);

	EXPECT_EQ(TelemetryString(Result, TEXT("class_resolution_method_print")), "direct_path");
	EXPECT_EQ(TelemetryString(Result, TEXT("resolved_class_path")), "/Script/Engine.KismetSystemLibrary");
	EXPECT_EQ(TelemetryString(Result, TEXT("original_class_input")), "KismetSystemLibrary");
	EXPECT_EQ(TelemetryNumber(Result, TEXT("asset_registry_lookups")), -1.0);
	EXPECT_TRUE(ValidationFailures(Result).empty());
	EXPECT_TRUE(Result.GetErrorMessages().IsEmpty());
}

TEST_F(PopulateMatchSpawner, AnUnknownFunctionLeavesNoNode)
{
	Calvorn::FToolResult Result;
	UEdGraphNode* Node = nullptr;
	const int32 NodesBefore = Graph->Nodes.Num();
	EXPECT_FALSE(Spawn(MakeRecord(TEXT("x"), TEXT("K2Node_CallFunction"), TEXT(""), TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintStrings")), Result, Node));
	EXPECT_EQ(ValidationFailures(Result), std::vector<std::string>({
		"Deterministic spawn failed: Function 'PrintStrings' not found in class '/Script/Engine.KismetSystemLibrary' (or overloads exist without menu_title). Returning failure to caller."}));
	EXPECT_EQ(Graph->Nodes.Num(), NodesBefore);
	// The class was found, so its resolution is on record although the node failed.
	EXPECT_EQ(TelemetryString(Result, TEXT("class_resolution_method_x")), "direct_path");
}

TEST_F(PopulateMatchSpawner, PromotableOperatorsKeepTheNodeTheyMake)
{
	Calvorn::FToolResult Result;
	UEdGraphNode* Node = nullptr;
	ASSERT_TRUE(Spawn(MakeRecord(TEXT("gt"), TEXT("K2Node_PromotableOperator"), TEXT(""), TEXT("KismetMathLibrary"), TEXT("Greater_IntInt")), Result, Node))
		<< Join(ValidationFailures(Result));
	EXPECT_TRUE(Node->IsA<UK2Node_PromotableOperator>());
	EXPECT_TRUE(Graph->Nodes.Contains(Node));

	// A plain call request of an operator function gets the operator node the menu would give, and keeps it.
	UEdGraphNode* Plain = nullptr;
	ASSERT_TRUE(Spawn(MakeRecord(TEXT("add"), TEXT("K2Node_CallFunction"), TEXT(""), TEXT("KismetMathLibrary"), TEXT("Add_IntInt")), Result, Plain))
		<< Join(ValidationFailures(Result));
	EXPECT_TRUE(Plain->IsA<UK2Node_CallFunction>());
	EXPECT_TRUE(ValidationFailures(Result).empty());
}

TEST_F(PopulateMatchSpawner, CastsTakeTheirClassAndIgnoreTheFunction)
{
	Calvorn::FToolResult Result;
	UEdGraphNode* Node = nullptr;
	ASSERT_TRUE(Spawn(MakeRecord(TEXT("cast"), TEXT("K2Node_DynamicCast"), TEXT(""), TEXT("Character"), TEXT("Ignored")), Result, Node)) << Join(ValidationFailures(Result));
	UK2Node_DynamicCast* CastNode = Cast<UK2Node_DynamicCast>(Node);
	ASSERT_NE(CastNode, nullptr);
	EXPECT_EQ(CastNode->TargetType.Get(), FindClass(TEXT("/Script/Engine.Character")));
	EXPECT_TRUE(Graph->Nodes.Contains(Node));
	EXPECT_TRUE(Node->NodeGuid.IsValid());
	EXPECT_NE(Node->FindPin(TEXT("Object")), nullptr);

	// Called directly, a cast needs its class only.
	UEdGraphNode* NoFunction = nullptr;
	ASSERT_TRUE(Spawn(MakeRecord(TEXT("pawn"), TEXT("K2Node_DynamicCast"), TEXT(""), TEXT("/Script/Engine.Pawn"), TEXT("")), Result, NoFunction));
	EXPECT_EQ(Cast<UK2Node_DynamicCast>(NoFunction)->TargetType.Get(), FindClass(TEXT("/Script/Engine.Pawn")));

	// Blueprint targets by bare name: each one is a lookup of the registry.
	UEdGraphNode* First = nullptr;
	UEdGraphNode* Second = nullptr;
	ASSERT_TRUE(Spawn(MakeRecord(TEXT("door1"), TEXT("K2Node_DynamicCast"), TEXT(""), TEXT("BP_MatchDoor"), TEXT("-")), Result, First));
	ASSERT_TRUE(Spawn(MakeRecord(TEXT("door2"), TEXT("K2Node_DynamicCast"), TEXT(""), TEXT("BP_MatchDoor"), TEXT("-")), Result, Second));
	EXPECT_NE(First, Second);
	EXPECT_EQ(Cast<UK2Node_DynamicCast>(Second)->TargetType.Get(), Door->GeneratedClass.Get());
	EXPECT_EQ(TelemetryNumber(Result, TEXT("asset_registry_lookups")), 2.0);
	EXPECT_EQ(TelemetryString(Result, TEXT("class_resolution_method_door2")), "asset_registry");
	EXPECT_EQ(TelemetryString(Result, TEXT("resolved_class_path")), "/Game/Match/BP_MatchDoor.BP_MatchDoor_C");
	EXPECT_EQ(TelemetryString(Result, TEXT("original_class_input")), "BP_MatchDoor");
	EXPECT_EQ(TelemetryString(Result, TEXT("class_resolution_method_cast")), "direct_path");
}

TEST_F(PopulateMatchSpawner, OverloadsNeedTheTitleThatNamesOne)
{
	const FOverloadClasses& Classes = GetOverloadClasses();
	UFunction* Found = nullptr;

	// One function of that name: the title plays no part.
	EXPECT_TRUE(FDeterministicSpawner::FindFunctionWithOverloadHandling(Classes.Child, TEXT("describe"), TEXT("Not its title"), Found));
	EXPECT_EQ(Found, Classes.Child->FindFunctionByName(TEXT("Describe")));
	// Two: no title, or a title neither has, gives nothing rather than the first.
	EXPECT_FALSE(FDeterministicSpawner::FindFunctionWithOverloadHandling(Classes.Child, TEXT("Compute"), TEXT(""), Found));
	EXPECT_EQ(Found, nullptr);
	EXPECT_FALSE(FDeterministicSpawner::FindFunctionWithOverloadHandling(Classes.Child, TEXT("Compute"), TEXT("Compute Double"), Found));
	EXPECT_TRUE(FDeterministicSpawner::FindFunctionWithOverloadHandling(Classes.Child, TEXT("Compute"), TEXT("compute float"), Found));
	EXPECT_EQ(Found, Classes.BaseCompute);
	EXPECT_TRUE(FDeterministicSpawner::FindFunctionWithOverloadHandling(Classes.Child, TEXT("COMPUTE"), TEXT("Compute Int"), Found));
	EXPECT_EQ(Found, Classes.ChildCompute);
	EXPECT_FALSE(FDeterministicSpawner::FindFunctionWithOverloadHandling(nullptr, TEXT("Compute"), TEXT("Compute Int"), Found));
	EXPECT_FALSE(FDeterministicSpawner::FindFunctionWithOverloadHandling(Classes.Child, TEXT(""), TEXT("Compute Int"), Found));

	// Through the spawner: the titled request spawns that overload, the untitled one fails and leaves nothing.
	Calvorn::FToolResult Result;
	UEdGraphNode* Node = nullptr;
	ASSERT_TRUE(Spawn(MakeRecord(TEXT("f"), TEXT("K2Node_CallFunction"), TEXT("Compute Float"), TEXT("MatchOverloadChild"), TEXT("Compute")), Result, Node))
		<< Join(ValidationFailures(Result));
	EXPECT_EQ(Cast<UK2Node_CallFunction>(Node)->GetTargetFunction(), Classes.BaseCompute);
	// Only reflection knew the class by that name: the method stays the spellings' one, and no path is claimed.
	EXPECT_EQ(TelemetryString(Result, TEXT("class_resolution_method_f")), "direct_path");
	EXPECT_EQ(TelemetryString(Result, TEXT("resolved_class_path")), "<absent>");
	EXPECT_EQ(TelemetryString(Result, TEXT("original_class_input")), "<absent>");
	UEdGraphNode* IntNode = nullptr;
	ASSERT_TRUE(Spawn(MakeRecord(TEXT("i"), TEXT("K2Node_CallFunction"), TEXT("Compute Int"), TEXT("MatchOverloadChild"), TEXT("Compute")), Result, IntNode))
		<< Join(ValidationFailures(Result));
	EXPECT_EQ(Cast<UK2Node_CallFunction>(IntNode)->GetTargetFunction(), Classes.ChildCompute);

	Calvorn::FToolResult Untitled;
	UEdGraphNode* None = nullptr;
	const int32 NodesBefore = Graph->Nodes.Num();
	EXPECT_FALSE(Spawn(MakeRecord(TEXT("u"), TEXT("K2Node_CallFunction"), TEXT(""), TEXT("MatchOverloadChild"), TEXT("Compute")), Untitled, None));
	EXPECT_EQ(ValidationFailures(Untitled), std::vector<std::string>({
		"Deterministic spawn failed: Function 'Compute' not found in class '' (or overloads exist without menu_title). Returning failure to caller."}));
	EXPECT_EQ(Graph->Nodes.Num(), NodesBefore);
}

TEST_F(PopulateMatchSpawner, ABlueprintsOwnFunctionSeenThroughItsGeneratedClassIsKept)
{
	UEdGraph* Function = AddFunction(Host, TEXT("OpenTheDoor"));
	ASSERT_NE(Function, nullptr);
	FKismetEditorUtilities::CompileBlueprint(Host);
	ASSERT_NE(Host->GeneratedClass->FindFunctionByName(TEXT("OpenTheDoor")), nullptr);

	Calvorn::FToolResult Result;
	UEdGraphNode* Node = nullptr;
	ASSERT_TRUE(Spawn(MakeRecord(TEXT("open"), TEXT("K2Node_CallFunction"), TEXT(""), TEXT("/Game/Match/BP_Host.BP_Host_C"), TEXT("OpenTheDoor")), Result, Node))
		<< Join(ValidationFailures(Result));
	EXPECT_TRUE(Graph->Nodes.Contains(Node));
	EXPECT_EQ(Cast<UK2Node_CallFunction>(Node)->FunctionReference.GetMemberName(), FName(TEXT("OpenTheDoor")));
	EXPECT_EQ(TelemetryNumber(Result, TEXT("pointer_mismatch_allowed")), 1.0);
	EXPECT_EQ(TelemetryString(Result, TEXT("class_resolution_method_open")), "blueprint_path");
}

TEST_F(PopulateMatchSpawner, ACustomEventPlacedBeforeTheLastCompileCanBeCalled)
{
	FGraphNodeCreator<UK2Node_CustomEvent> Creator(*Graph);
	UK2Node_CustomEvent* Event = Creator.CreateNode(false);
	Event->CustomFunctionName = TEXT("OnKnocked");
	Creator.Finalize();
	FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Host);
	ASSERT_EQ(Host->GeneratedClass->FindFunctionByName(TEXT("OnKnocked")), nullptr);

	Calvorn::FToolResult Result;
	UEdGraphNode* Node = nullptr;
	ASSERT_TRUE(Spawn(MakeRecord(TEXT("knock"), TEXT("K2Node_CallFunction"), TEXT(""), TEXT("/Game/Match/BP_Host"), TEXT("OnKnocked")), Result, Node))
		<< Join(ValidationFailures(Result));
	EXPECT_EQ(Cast<UK2Node_CallFunction>(Node)->FunctionReference.GetMemberName(), FName(TEXT("OnKnocked")));
	EXPECT_EQ(TelemetryString(Result, TEXT("class_resolution_method_knock")), "asset_registry");

	// A name the Blueprint declares nowhere still fails.
	UEdGraphNode* Missing = nullptr;
	EXPECT_FALSE(Spawn(MakeRecord(TEXT("miss"), TEXT("K2Node_CallFunction"), TEXT(""), TEXT("/Game/Match/BP_Host"), TEXT("OnKnockedTwice")), Result, Missing));
	EXPECT_EQ(Missing, nullptr);
}
