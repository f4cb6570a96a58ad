// The routes of the spawn dispatcher that need no action menu: member variables (own and of other objects), events,
// parent calls, and the way a request picks its route. Each request is written as a client writes it.

#include "PopulateSpawnTestSupport.h"

#include "K2Node_CallParentFunction.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_Event.h"
#include "K2Node_Self.h"
#include "K2Node_VariableGet.h"
#include "K2Node_VariableSet.h"
#include "Populate/EventNodeSpawner.h"

using namespace PopulateSpawnTests;

namespace
{
	class PopulateSpawnRoutes : public FSpawnFixture
	{
	protected:
		/** The override event nodes of the Blueprint for that event. */
		int32 CountEvents(const TCHAR* EventName) const
		{
			int32 Count = 0;
			for (const UEdGraphNode* Node : Graph->Nodes)
			{
				const UK2Node_Event* Event = Cast<UK2Node_Event>(Node);
				if (Event && !Event->IsA<UK2Node_CustomEvent>() && Event->EventReference.GetMemberName() == FName(EventName))
				{
					++Count;
				}
			}
			return Count;
		}

		UEdGraph* MakeFunctionGraph(const TCHAR* Name)
		{
			UEdGraph* Function = FBlueprintEditorUtils::CreateNewGraph(Blueprint, FName(Name), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
			FBlueprintEditorUtils::AddFunctionGraph<UClass>(Blueprint, Function, true, nullptr);
			return Function;
		}
	};

	// ---- Member variables of the Blueprint ---------------------------------------------------------------------

	struct FOwnVariableCase
	{
		const char* Name;
		const TCHAR* Json;
		/** Empty when the request must fail. */
		std::string ExpectedClass;
		std::vector<std::string> ExpectedPins;
		std::string ExpectedFailure;
		/** The label the request counts under, whatever its route. */
		const TCHAR* SpawnMethod;
	};

	TEST_F(PopulateSpawnRoutes, OwnVariablesSpawnWithoutTheMenuOrFailWithTheirReason)
	{
		const std::vector<FOwnVariableCase> Cases = {
			{"get of a declared variable", TEXT(R"({"node_guid":"g","class_name":"K2Node_VariableGet","node_metadata":{"variable_name":"Health"}})"),
				"K2Node_VariableGet", {"out:Health"}, "", TEXT("cam_global_with_class")},
			{"set, class named in another case", TEXT(R"({"class_name":"k2node_variableset","node_metadata":{"variable_name":"bIsAlive"}})"),
				"K2Node_VariableSet", {"in:execute", "out:then", "in:bIsAlive", "out:Output_Get"}, "", TEXT("cam_global_with_class")},
			{"the label of a spawn_method is kept, trimmed", TEXT(R"({"class_name":"K2Node_VariableGet","node_metadata":{"variable_name":"Health","spawn_method":"  custom  "}})"),
				"K2Node_VariableGet", {"out:Health"}, "", TEXT("custom")},
			{"class and function given still take the variable route", TEXT(R"({"class_name":"K2Node_VariableGet","target_class":"Actor","target_function":"K2_GetActorLocation","node_metadata":{"variable_name":"Health"}})"),
				"K2Node_VariableGet", {"out:Health"}, "", TEXT("deterministic")},
			{"a variable the Blueprint lacks", TEXT(R"({"class_name":"K2Node_VariableGet","node_metadata":{"variable_name":"Mana"}})"),
				"", {}, "[Failure] Variable 'Mana' does not exist in Blueprint. Create the variable first using bp_populate_graph before using it in bp_populate_graph.", TEXT("cam_global_with_class")},
			{"a property only inherited from the native parent", TEXT(R"({"class_name":"K2Node_VariableSet","menu_category":"Vars","node_metadata":{"variable_name":"Tags"}})"),
				"", {}, "[Failure] Variable 'Tags' does not exist in Blueprint. Create the variable first using bp_populate_graph before using it in bp_populate_graph.", TEXT("cam_filtered")},
		};
		for (const FOwnVariableCase& Case : Cases)
		{
			SCOPED_TRACE(Case.Name);
			Result = Calvorn::FToolResult();
			const int32 NodesBefore = Graph->Nodes.Num();
			UEdGraphNode* Node = Spawn(Case.Json);
			EXPECT_EQ(SpawnMethodCount(Case.SpawnMethod), 1.0);
			EXPECT_EQ(Errors(), std::vector<std::string>{});
			if (Case.ExpectedClass.empty())
			{
				EXPECT_EQ(Node, nullptr);
				EXPECT_EQ(Graph->Nodes.Num(), NodesBefore);
				EXPECT_EQ(Warnings(), std::vector<std::string>{Case.ExpectedFailure});
				EXPECT_EQ(ValidationFailures(), std::vector<std::string>{Case.ExpectedFailure});
				continue;
			}
			ASSERT_NE(Node, nullptr) << Describe(Result);
			EXPECT_EQ(U8(Node->GetClass()->GetName()), Case.ExpectedClass);
			EXPECT_EQ(Node->GetGraph(), Graph);
			EXPECT_EQ(Graph->Nodes.Num(), NodesBefore + 1);
			EXPECT_TRUE(Node->NodeGuid.IsValid());
			const UK2Node_Variable* Variable = Cast<UK2Node_Variable>(Node);
			ASSERT_NE(Variable, nullptr);
			EXPECT_TRUE(Variable->VariableReference.IsSelfContext());
			EXPECT_EQ(Variable->VariableReference.GetMemberGuid(), FBlueprintEditorUtils::FindMemberVariableGuidByName(Blueprint, Variable->GetVarName()));
			EXPECT_EQ(PinNames(Node), Case.ExpectedPins);
			EXPECT_EQ(Warnings(), std::vector<std::string>{});
		}
	}

	TEST_F(PopulateSpawnRoutes, ALatencyEntryIsRecordedForEverySpawnWhateverItsOutcome)
	{
		Spawn(TEXT(R"({"node_guid":"ok","menu_title":"Get Health","class_name":"K2Node_VariableGet","node_metadata":{"variable_name":"Health"}})"));
		Spawn(TEXT(R"({"node_guid":"bad","menu_title":"Get Mana","class_name":"K2Node_VariableGet","node_metadata":{"variable_name":"Mana"}})"));
		EXPECT_EQ(Column(Telemetry(), TEXT("node_creation_latency_ms"), TEXT("node_id")), (std::vector<std::string>{"ok", "bad"}));
		EXPECT_EQ(Column(Telemetry(), TEXT("node_creation_latency_ms"), TEXT("node_title")), (std::vector<std::string>{"Get Health", "Get Mana"}));
		for (const TSharedPtr<FJsonObject>& Entry : Objects(Telemetry(), TEXT("node_creation_latency_ms")))
		{
			double Milliseconds = -1.0;
			EXPECT_TRUE(Entry->TryGetNumberField(TEXT("duration_ms"), Milliseconds));
			EXPECT_GE(Milliseconds, 0.0);
		}
	}

	TEST_F(PopulateSpawnRoutes, AVariableRequestWithoutANameGoesOnToTheLaterRoutes)
	{
		// Without a variable name the request is a menu search like any other; the empty menu proves it got there.
		EXPECT_EQ(Spawn(TEXT(R"({"class_name":"K2Node_VariableGet","menu_title":"Get Health"})")), nullptr);
		EXPECT_EQ(Errors(), std::vector<std::string>{"SharedCAM is null - internal error"});
		EXPECT_EQ(Spawn(TEXT(R"({"class_name":"K2Node_VariableGet","node_metadata":{"variable_name":""}})")), nullptr);
		EXPECT_EQ(Result.GetErrorMessages().Num(), 2);
	}

	TEST_F(PopulateSpawnRoutes, AMissingGraphOrBlueprintIsAnErrorWithoutTelemetry)
	{
		FNodeModificationRecord Record = Request(TEXT(R"({"class_name":"K2Node_VariableGet","node_metadata":{"variable_name":"Health"}})"));
		EXPECT_EQ(FSpawnDispatcher::SpawnNode(nullptr, Record, Blueprint, Menu, Result, nullptr), nullptr);
		EXPECT_EQ(FSpawnDispatcher::SpawnNode(Graph, Record, nullptr, Menu, Result, nullptr), nullptr);
		EXPECT_EQ(Errors(), (std::vector<std::string>{"Invalid graph or blueprint", "Invalid graph or blueprint"}));
		EXPECT_FALSE(Telemetry().IsValid());
	}

	// ---- Variables of other objects --------------------------------------------------------------------------

	class PopulateSpawnCrossObject : public PopulateSpawnRoutes
	{
	protected:
		PopulateSpawnCrossObject()
		{
			Target = MakeTargetBlueprint();
			Owner = Place<UK2Node_Self>(Graph);
			TargetClassPath = Target && Target->GeneratedClass ? Target->GeneratedClass->GetPathName() : FString();
		}

		/** A cross-object request: the members after the class name, with {class} standing for the target class path. */
		FString CrossRequest(const TCHAR* ClassName, const FString& Metadata) const
		{
			return FString::Printf(TEXT(R"({"node_guid":"cross","class_name":"%s","node_metadata":{%s}})"), ClassName, *Metadata.Replace(TEXT("{class}"), *TargetClassPath));
		}

		FString OwnerDigits(int32 Count) const
		{
			return Owner->NodeGuid.ToString(EGuidFormats::Digits).Left(Count);
		}

		UBlueprint* Target = nullptr;
		UK2Node_Self* Owner = nullptr;
		FString TargetClassPath;
	};

	struct FCrossFailureCase
	{
		const char* Name;
		const TCHAR* Metadata;
		bool bWithSessionMap;
		std::string ExpectedFailure;
	};

	TEST_F(PopulateSpawnCrossObject, IncompleteOrWrongOwnershipFailsAndLeavesNoNode)
	{
		ASSERT_FALSE(TargetClassPath.IsEmpty());
		const std::vector<FCrossFailureCase> Cases = {
			{"owner pin missing", TEXT(R"("variable_name":"Armor","variable_source_class":"{class}","property_owner_node_guid":"x")"), false,
				"[Failure] Cross-object variable access requires ALL of: variable_source_class, property_owner_node_guid, owner_pin_name. Got: source_class=present, owner_guid=present, owner_pin=missing. If you want a Blueprint-owned variable, omit all three fields."},
			{"only the pin, and an empty one still counts as present", TEXT(R"("variable_name":"Armor","owner_pin_name":"")"), false,
				"[Failure] Cross-object variable access requires ALL of: variable_source_class, property_owner_node_guid, owner_pin_name. Got: source_class=missing, owner_guid=missing, owner_pin=present. If you want a Blueprint-owned variable, omit all three fields."},
			{"owner unknown, no session", TEXT(R"("variable_name":"Armor","variable_source_class":"{class}","property_owner_node_guid":"ZZZZ","owner_pin_name":"self")"), false,
				"[Failure] Owner node 'ZZZZ' not found in Graph->Nodes (no session map available)"},
			{"owner unknown, with a session", TEXT(R"("variable_name":"Armor","variable_source_class":"{class}","property_owner_node_guid":"ZZZZ","owner_pin_name":"self")"), true,
				"[Failure] Owner node 'ZZZZ' not found in CreatedNodes session map or Graph->Nodes"},
			{"a pin the owner lacks, though a compatible one exists", TEXT(R"("variable_name":"Armor","variable_source_class":"{class}","property_owner_node_guid":"owner","owner_pin_name":"Target")"), true,
				"[Failure] Owner pin 'Target' not found on node"},
			{"a class path that names nothing", TEXT(R"("variable_name":"Armor","variable_source_class":"/Script/Fake.NonExistentClass","property_owner_node_guid":"owner","owner_pin_name":"self")"), true,
				"[Failure] Class '/Script/Fake.NonExistentClass' not found. Note: Use '/Script/ModuleName.ClassName' for C++ classes or '/Game/Path/Blueprint' for Blueprint classes."},
			{"a property the class lacks", TEXT(R"("variable_name":"Shield","variable_source_class":"{class}","property_owner_node_guid":"owner","owner_pin_name":"self")"), true,
				"[Failure] Cross-object variable get spawn returned null for variable 'Shield' on class '{class}'"},
		};
		TMap<FString, UEdGraphNode*> Session;
		Session.Add(TEXT("owner"), Owner);
		for (const FCrossFailureCase& Case : Cases)
		{
			SCOPED_TRACE(Case.Name);
			Result = Calvorn::FToolResult();
			const int32 NodesBefore = Graph->Nodes.Num();
			EXPECT_EQ(Spawn(CrossRequest(TEXT("K2Node_VariableGet"), Case.Metadata), Case.bWithSessionMap ? &Session : nullptr), nullptr);
			std::string Expected = Case.ExpectedFailure;
			if (const size_t At = Expected.find("{class}"); At != std::string::npos)
			{
				Expected.replace(At, 7, U8(TargetClassPath));
			}
			EXPECT_EQ(Warnings(), std::vector<std::string>{Expected});
			EXPECT_EQ(ValidationFailures(), std::vector<std::string>{Expected});
			EXPECT_EQ(Graph->Nodes.Num(), NodesBefore);
			EXPECT_TRUE(Owner->FindPin(TEXT("self"))->LinkedTo.IsEmpty());
		}
	}

	TEST_F(PopulateSpawnCrossObject, TheOwnerIsFoundByItsRequestIdOrByPartOfItsGuidAndWired)
	{
		ASSERT_FALSE(TargetClassPath.IsEmpty());
		TMap<FString, UEdGraphNode*> Session;
		Session.Add(TEXT("MyOwner"), Owner);

		struct FCase
		{
			const char* Name;
			FString OwnerId;
			bool bWithSessionMap;
			const TCHAR* ClassName;
			const char* Resolution;
		};
		const std::vector<FCase> Cases = {
			{"request id of this call, in another case", TEXT("myowner"), true, TEXT("K2Node_VariableGet"), "session_map"},
			{"first ten digits of the guid", OwnerDigits(10), false, TEXT("K2Node_VariableGet"), "graph_nodes"},
			{"lower-case digits, with a session that lacks them", OwnerDigits(12).ToLower(), true, TEXT("K2Node_VariableSet"), "graph_nodes"},
		};
		const FGuid ArmorGuid = FBlueprintEditorUtils::FindMemberVariableGuidByName(Target, TEXT("Armor"));
		ASSERT_TRUE(ArmorGuid.IsValid());
		for (const FCase& Case : Cases)
		{
			SCOPED_TRACE(Case.Name);
			Result = Calvorn::FToolResult();
			const FString Metadata = FString::Printf(TEXT(R"("variable_name":"Armor","variable_source_class":"{class}","property_owner_node_guid":"%s","owner_pin_name":"self")"), *Case.OwnerId);
			UEdGraphNode* Node = Spawn(CrossRequest(Case.ClassName, Metadata), Case.bWithSessionMap ? &Session : nullptr);
			ASSERT_NE(Node, nullptr) << Describe(Result);
			EXPECT_EQ(Node->GetClass()->GetName(), FString(Case.ClassName));
			const UK2Node_Variable* Variable = CastChecked<UK2Node_Variable>(Node);
			EXPECT_FALSE(Variable->VariableReference.IsSelfContext());
			EXPECT_EQ(Variable->VariableReference.GetMemberParentClass(), Target->GeneratedClass.Get());
			EXPECT_EQ(Variable->VariableReference.GetMemberGuid(), ArmorGuid);
			const UEdGraphPin* SelfPin = Node->FindPin(UEdGraphSchema_K2::PN_Self);
			ASSERT_NE(SelfPin, nullptr);
			ASSERT_EQ(SelfPin->LinkedTo.Num(), 1);
			EXPECT_EQ(SelfPin->LinkedTo[0], Owner->FindPin(TEXT("self")));
			EXPECT_EQ(Str(Telemetry(), TEXT("cross_object_owner_resolution_cross")), Case.Resolution);
			EXPECT_EQ(Warnings(), std::vector<std::string>{});
		}
	}

	TEST_F(PopulateSpawnCrossObject, ClassesLoadQuietlyByPathOnly)
	{
		struct FCase
		{
			FString Path;
			UClass* Expected;
		};
		const std::vector<FCase> Cases = {
			{TEXT("/Script/Engine.Actor"), ActorClass},
			{TargetClassPath, Target->GeneratedClass.Get()},
			{TEXT(""), nullptr},
			{TEXT("Actor"), nullptr},
			{TEXT("/Script/Fake.NoSuchClass"), nullptr},
			{TEXT("/Game/Readers/Nothing.Nothing_C"), nullptr},
		};
		for (const FCase& Case : Cases)
		{
			EXPECT_EQ(FSpawnDispatcher::LoadClassQuietly(Case.Path), Case.Expected) << U8(Case.Path);
		}
	}

	TEST_F(PopulateSpawnCrossObject, AClassPathThatDoesNotLoadGetsASuggestionWhereOneExists)
	{
		struct FCase
		{
			const char* Name;
			const TCHAR* Path;
			std::string Warning;
			std::string Suggestion;
			std::string Context;
		};
		const std::vector<FCase> Cases = {
			{"a Blueprint spelt as a script path", TEXT("/Script/Game.BP_Target"),
				"[Failure] Class '/Script/Game.BP_Target' not found. Suggestion: Did you mean '/Game/Readers/BP_Target.BP_Target'?",
				"/Game/Readers/BP_Target.BP_Target", "Found Blueprint 'BP_Target' - use path '/Game/Readers/BP_Target.BP_Target' instead of '/Script/' path"},
			{"a native class spelt as content", TEXT("/Game/Blueprints/Actor"),
				"[Failure] Class '/Game/Blueprints/Actor' not found. Suggestion: Did you mean '/Script/Engine.Actor'?",
				"/Script/Engine.Actor", "Found C++ class 'Actor' in module 'Engine' - use '/Script/' path instead"},
			{"nothing like it", TEXT("/Game/Blueprints/Zyxxy"),
				"[Failure] Class '/Game/Blueprints/Zyxxy' not found. Note: Use '/Script/ModuleName.ClassName' for C++ classes or '/Game/Path/Blueprint' for Blueprint classes.",
				"<absent>", "<absent>"},
		};
		for (const FCase& Case : Cases)
		{
			SCOPED_TRACE(Case.Name);
			Result = Calvorn::FToolResult();
			FSpawnDispatcher::SuggestClassPath(Case.Path, Result);
			EXPECT_EQ(Warnings(), std::vector<std::string>{Case.Warning});
			EXPECT_EQ(ValidationFailures(), std::vector<std::string>{Case.Warning});
			EXPECT_EQ(Str(Telemetry(), TEXT("class_path_suggestion")), Case.Suggestion);
			EXPECT_EQ(Str(Telemetry(), TEXT("class_path_suggestion_context")), Case.Context);
		}
	}

	// ---- Events ------------------------------------------------------------------------------------------------

	TEST_F(PopulateSpawnRoutes, AnOverrideIsMadeOnceAndReusedUnlessDuplicatesAreAllowed)
	{
		ASSERT_EQ(CountEvents(TEXT("ReceiveDestroyed")), 0);
		UEdGraphNode* First = Spawn(TEXT(R"({"node_guid":"d1","class_name":"K2Node_Event","node_metadata":{"event_name":"ReceiveDestroyed"}})"));
		ASSERT_NE(First, nullptr) << Describe(Result);
		const UK2Node_Event* Event = Cast<UK2Node_Event>(First);
		ASSERT_NE(Event, nullptr);
		EXPECT_FALSE(First->IsA<UK2Node_CustomEvent>());
		EXPECT_EQ(Event->EventReference.GetMemberName(), FName(TEXT("ReceiveDestroyed")));
		EXPECT_EQ(Event->EventReference.GetMemberParentClass(), ActorClass);
		EXPECT_TRUE(Event->bOverrideFunction);
		EXPECT_EQ(PinNames(First), (std::vector<std::string>{"out:OutputDelegate", "out:then"}));
		EXPECT_EQ(Successes(), std::vector<std::string>{"Created override for Event ReceiveDestroyed in parent class Actor"});
		EXPECT_EQ(Warnings(), std::vector<std::string>{});

		// The same request again: the same node, a success with a note naming it by its short id.
		UEdGraphNode* Second = Spawn(TEXT(R"({"node_guid":"d2","class_name":"K2Node_Event","menu_title":"ReceiveDestroyed"})"));
		EXPECT_EQ(Second, First);
		EXPECT_EQ(Warnings(), std::vector<std::string>{"[Warning] Event 'ReceiveDestroyed' already exists in EventGraph; reusing node " + ShortGuidOf(First)});
		EXPECT_EQ(CountEvents(TEXT("ReceiveDestroyed")), 1);
		EXPECT_EQ(SpawnMethodCount(TEXT("deterministic_event")), 2.0);
		EXPECT_FALSE(Result.HasFailed());

		struct FCase
		{
			const TCHAR* AllowDuplicate;
			bool bAddsNode;
		};
		const std::vector<FCase> Cases = {{TEXT("yes"), true}, {TEXT("1"), true}, {TEXT("TRUE"), true}, {TEXT("no"), false}, {TEXT("0"), false}, {TEXT(""), false}, {TEXT("yes please"), false}};
		for (const FCase& Case : Cases)
		{
			SCOPED_TRACE(U8(Case.AllowDuplicate));
			const int32 Before = CountEvents(TEXT("ReceiveDestroyed"));
			UEdGraphNode* Node = Spawn(FString::Printf(TEXT(R"({"class_name":"K2Node_Event","node_metadata":{"event_name":"ReceiveDestroyed","allow_duplicate":"%s"}})"), Case.AllowDuplicate));
			ASSERT_NE(Node, nullptr);
			EXPECT_EQ(CountEvents(TEXT("ReceiveDestroyed")), Before + (Case.bAddsNode ? 1 : 0));
			EXPECT_EQ(Node == First, !Case.bAddsNode);
		}
	}

	TEST_F(PopulateSpawnRoutes, TheDefaultBeginPlayOfANewBlueprintIsReusedByARequestForIt)
	{
		ASSERT_EQ(CountEvents(TEXT("ReceiveBeginPlay")), 1);
		UEdGraphNode* Node = Spawn(TEXT(R"({"class_name":"K2Node_Event","node_metadata":{"event_name":" ReceiveBeginPlay "}})"));
		ASSERT_NE(Node, nullptr);
		EXPECT_EQ(CountEvents(TEXT("ReceiveBeginPlay")), 1);
		EXPECT_EQ(Warnings(), std::vector<std::string>{"[Warning] Event 'ReceiveBeginPlay' already exists in EventGraph; reusing node " + ShortGuidOf(Node)});
	}

	TEST_F(PopulateSpawnRoutes, CustomEventsAreCreatedOnEveryRequestWithACleanedName)
	{
		UEdGraphNode* First = Spawn(TEXT(R"({"class_name":"K2Node_CustomEvent","menu_title":" Open Door.Now(1) "})"));
		UEdGraphNode* Second = Spawn(TEXT(R"J({"class_name":"K2Node_CustomEvent","node_metadata":{"event_name":"OpenDoor.Now(1)","allow_duplicate":"no"}})J"));
		ASSERT_NE(First, nullptr) << Describe(Result);
		ASSERT_NE(Second, nullptr) << Describe(Result);
		EXPECT_NE(First, Second);
		for (const UEdGraphNode* Node : {First, Second})
		{
			const UK2Node_CustomEvent* Custom = Cast<UK2Node_CustomEvent>(Node);
			ASSERT_NE(Custom, nullptr);
			EXPECT_EQ(Custom->CustomFunctionName, FName(TEXT("OpenDoor_Now_1_")));
			EXPECT_TRUE(Custom->bIsEditable);
			EXPECT_EQ(Custom->GetGraph(), Graph);
		}
		EXPECT_EQ(Successes(), std::vector<std::string>(2, "Created custom event 'OpenDoor_Now_1_' in EventGraph 'EventGraph'"));
		EXPECT_EQ(SpawnMethodCount(TEXT("deterministic_event")), 2.0);
	}

	TEST_F(PopulateSpawnRoutes, EventNamesAreCleanedOfBlanksDotsAndParentheses)
	{
		const std::vector<std::pair<const TCHAR*, const char*>> Cases = {
			{TEXT("  On Hit  "), "OnHit"},
			{TEXT("A.B(C)"), "A_B_C_"},
			{TEXT("( )"), "__"},
			{TEXT("   "), ""},
			{TEXT("Plain"), "Plain"},
		};
		for (const auto& [Input, Expected] : Cases)
		{
			EXPECT_EQ(U8(FEventNodeSpawner::CleanEventName(Input)), Expected) << U8(Input);
		}
	}

	struct FEventFailureCase
	{
		const char* Name;
		const TCHAR* Json;
		bool bInFunctionGraph;
		/** The plain reason; the result holds it with "[Failure] " in front, as an error or a warning. */
		std::string Reason;
		bool bIsError;
	};

	TEST_F(PopulateSpawnRoutes, EventRequestsThatCannotBeMetFailWithTheirReason)
	{
		UEdGraph* Function = MakeFunctionGraph(TEXT("Compute"));
		const std::vector<FEventFailureCase> Cases = {
			{"an event the parent class lacks", TEXT(R"({"class_name":"K2Node_Event","node_metadata":{"event_name":"ReceiveFoo"}})"), false,
				"Event 'ReceiveFoo' not found on class 'Unknown'", true},
			{"a function that is no event", TEXT(R"({"class_name":"K2Node_Event","node_metadata":{"event_name":"K2_GetActorLocation"}})"), false,
				"Event 'K2_GetActorLocation' not found on class 'Actor'", true},
			{"no name at all", TEXT(R"({"class_name":"K2Node_Event","node_metadata":{"event_name":" "}})"), false,
				"Event requests must include node_metadata.event_name", true},
			{"an override in a function graph", TEXT(R"({"class_name":"K2Node_Event","node_metadata":{"event_name":"ReceiveDestroyed"}})"), true,
				"Cannot create event nodes outside EventGraph 'Compute'", false},
			{"a custom event in a function graph", TEXT(R"({"class_name":"K2Node_CustomEvent","menu_title":"Ping"})"), true,
				"Cannot create event nodes outside EventGraph 'Compute'", false},
		};
		for (const FEventFailureCase& Case : Cases)
		{
			SCOPED_TRACE(Case.Name);
			Result = Calvorn::FToolResult();
			UEdGraph* Target = Case.bInFunctionGraph ? Function : Graph;
			const int32 NodesBefore = Target->Nodes.Num();
			EXPECT_EQ(Spawn(Case.Json, nullptr, Target), nullptr);
			const std::string Message = "[Failure] " + Case.Reason;
			EXPECT_EQ(Errors(), Case.bIsError ? std::vector<std::string>{Message} : std::vector<std::string>{});
			EXPECT_EQ(Warnings(), Case.bIsError ? std::vector<std::string>{} : std::vector<std::string>{Message});
			EXPECT_EQ(ValidationFailures(), std::vector<std::string>{Message});
			EXPECT_EQ(Target->Nodes.Num(), NodesBefore);
			EXPECT_EQ(SpawnMethodCount(TEXT("deterministic_event")), 1.0);
		}
	}

	TEST_F(PopulateSpawnRoutes, AnEventNameInTheMetadataMakesAnyRequestAnEventRequest)
	{
		// The class named is a call, but the metadata says event: the event route takes it, and says so.
		UEdGraphNode* Node = Spawn(TEXT(R"({"class_name":"K2Node_CallFunction","menu_title":"Print String","node_metadata":{"event_name":"ReceiveDestroyed","spawn_method":"custom"}})"));
		ASSERT_NE(Node, nullptr) << Describe(Result);
		EXPECT_TRUE(Node->IsA<UK2Node_Event>());
		EXPECT_EQ(SpawnMethodCount(TEXT("deterministic_event")), 1.0);
		EXPECT_EQ(SpawnMethodCount(TEXT("custom")), -1.0);

		// The class names are compared exactly: another spelling is no event request and goes to the menu.
		EXPECT_EQ(Spawn(TEXT(R"({"class_name":"k2node_customevent","menu_title":"Ping"})")), nullptr);
		EXPECT_EQ(Errors(), std::vector<std::string>{"SharedCAM is null - internal error"});
		EXPECT_EQ(SpawnMethodCount(TEXT("cam_global_with_class")), 1.0);
	}

	// ---- Parent calls ------------------------------------------------------------------------------------------

	TEST_F(PopulateSpawnRoutes, AParentCallNamesTheFunctionByTargetFunctionOrTitle)
	{
		struct FCase
		{
			const char* Name;
			const TCHAR* Json;
			const char* Function;
		};
		const std::vector<FCase> Cases = {
			{"title with the editor's prefix", TEXT(R"({"class_name":"K2Node_CallParentFunction","menu_title":"Parent: ReceiveBeginPlay"})"), "ReceiveBeginPlay"},
			{"prefix in another case", TEXT(R"({"class_name":"K2Node_CallParentFunction","menu_title":"parent: ReceiveTick"})"), "ReceiveTick"},
			{"title without the prefix is the name", TEXT(R"({"class_name":"K2Node_CallParentFunction","menu_title":"ReceiveDestroyed"})"), "ReceiveDestroyed"},
			{"target_function wins over the title", TEXT(R"({"class_name":"K2Node_CallParentFunction","target_function":"ReceiveTick","menu_title":"Parent: ReceiveBeginPlay"})"), "ReceiveTick"},
		};
		for (const FCase& Case : Cases)
		{
			SCOPED_TRACE(Case.Name);
			Result = Calvorn::FToolResult();
			const int32 NodesBefore = Graph->Nodes.Num();
			UEdGraphNode* Node = Spawn(Case.Json);
			ASSERT_NE(Node, nullptr) << Describe(Result);
			const UK2Node_CallParentFunction* Call = Cast<UK2Node_CallParentFunction>(Node);
			ASSERT_NE(Call, nullptr);
			EXPECT_EQ(U8(Call->FunctionReference.GetMemberName().ToString()), Case.Function);
			EXPECT_EQ(Call->FunctionReference.GetMemberParentClass(), ActorClass);
			EXPECT_NE(Call->GetTargetFunction(), nullptr);
			EXPECT_EQ(Graph->Nodes.Num(), NodesBefore + 1);
			EXPECT_TRUE(Graph->Nodes.Contains(Node));
			EXPECT_TRUE(Node->NodeGuid.IsValid());
			EXPECT_NE(Node->FindPin(UEdGraphSchema_K2::PN_Execute), nullptr);
			EXPECT_EQ(Warnings(), std::vector<std::string>{});
		}
	}

	TEST_F(PopulateSpawnRoutes, AParentCallWithoutAFunctionOfTheParentFails)
	{
		EXPECT_EQ(Spawn(TEXT(R"({"class_name":"K2Node_CallParentFunction"})")), nullptr);
		EXPECT_EQ(Warnings(), std::vector<std::string>{"[Failure] K2Node_CallParentFunction requires either target_function or menu_title with 'Parent: FunctionName' format"});

		Result = Calvorn::FToolResult();
		const int32 NodesBefore = Graph->Nodes.Num();
		EXPECT_EQ(Spawn(TEXT(R"({"class_name":"K2Node_CallParentFunction","menu_title":"Parent: Fly"})")), nullptr);
		ASSERT_EQ(Result.GetWarningMessages().Num(), 1);
		const FString& Text = Result.GetWarningMessages()[0];
		EXPECT_TRUE(Text.StartsWith(TEXT("[Failure] Function 'Fly' not found in parent class 'Actor'. Available functions: ["), ESearchCase::CaseSensitive)) << U8(Text);
		EXPECT_TRUE(Text.Contains(TEXT("ReceiveBeginPlay, "), ESearchCase::CaseSensitive)) << U8(Text);
		EXPECT_TRUE(Text.EndsWith(TEXT("]"), ESearchCase::CaseSensitive));
		EXPECT_EQ(ValidationFailures(), std::vector<std::string>{U8(Text)});
		EXPECT_EQ(Graph->Nodes.Num(), NodesBefore);

		// Only the exact class name selects this route.
		Result = Calvorn::FToolResult();
		EXPECT_EQ(Spawn(TEXT(R"({"class_name":"k2node_callparentfunction","menu_title":"Parent: ReceiveBeginPlay"})")), nullptr);
		EXPECT_EQ(Errors(), std::vector<std::string>{"SharedCAM is null - internal error"});
	}
}
