#include "ActionMenuTestUtils.h"

#include "EdGraph/EdGraphNode_Comment.h"
#include "K2Node_CallFunction.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_DynamicCast.h"
#include "K2Node_Event.h"
#include "K2Node_Timeline.h"
#include "K2Node_VariableGet.h"
#include "WidgetBlueprint.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"

using namespace ActionMenuTest;

namespace
{
	struct FExpectedEntry
	{
		const char* Title;
		const char* Category;
		const char* TypeId;
		const char* NodeClass;
	};

	/** Entries the editor's menu of an Actor Blueprint's event graph holds, as the editor titles and files them. */
	const FExpectedEntry GActorEventGraphEntries[] = {
		{"Print String", "Development", "FBlueprintActionMenuItem", "K2Node_CallFunction"},
		{"Get Actor Location", "Transformation", "FBlueprintActionMenuItem", "K2Node_CallFunction"},
		{"Delay", "Utilities|Flow Control", "FBlueprintActionMenuItem", "K2Node_CallFunction"},
		{"Branch", "Utilities|Flow Control", "FBlueprintActionMenuItem", "K2Node_IfThenElse"},
		{"Sequence", "Utilities|Flow Control", "FBlueprintActionMenuItem", "K2Node_ExecutionSequence"},
		{"Cast To Character", "Utilities|Casting", "FBlueprintActionMenuItem", "K2Node_DynamicCast"},
		{"Get a reference to self", "Variables", "FBlueprintActionMenuItem", "K2Node_Self"},
		{"Event BeginPlay", "Add Event", "FBlueprintActionMenuItem", "K2Node_Event"},
		{"Event Tick", "Add Event", "FBlueprintActionMenuItem", "K2Node_Event"},
		{"Add Custom Event...", "Add Event", "FBlueprintActionMenuItem", "K2Node_CustomEvent"},
		{"Spawn Actor from Class", "Game", "FBlueprintActionMenuItem", "K2Node_SpawnActorFromClass"},
		{"Add", "Utilities|Operators", "FBlueprintActionMenuItem", "K2Node_PromotableOperator"},
		{"Greater", "Utilities|Operators", "FBlueprintActionMenuItem", "K2Node_PromotableOperator"},
		{"Add Comment...", "", "FBlueprintActionMenuItem", "EdGraphNode_Comment"},
	};
}

TEST_F(FActionMenuFixture, ActorEventGraphMenuHoldsTheEditorsEntries)
{
	UBlueprint* Blueprint = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuActor"));
	ASSERT_NE(Blueprint, nullptr);
	const std::vector<FMenuRow> Rows = MenuFor(Blueprint, EventGraphOf(Blueprint));
	EXPECT_GT(Rows.size(), 1000u);

	for (const FExpectedEntry& Expected : GActorEventGraphEntries)
	{
		SCOPED_TRACE(Expected.Title);
		const FMenuRow* Row = FindRow(Rows, Expected.Title, Expected.Category);
		ASSERT_NE(Row, nullptr);
		EXPECT_EQ(Row->TypeId, Expected.TypeId);
		EXPECT_EQ(Row->NodeClass, Expected.NodeClass);
	}

	// Keywords come from the function's metadata; a search for "log" must reach Print String.
	EXPECT_NE(FindRow(Rows, "Print String")->Keywords.find("log print"), std::string::npos);
	// One promotable entry per operator, not one per operand type; containers keep their own "Add".
	int32 NumOperatorAdd = 0;
	for (const FMenuRow& Row : Rows)
	{
		NumOperatorAdd += (Row.Title == "Add" && Row.Category == "Utilities|Operators") ? 1 : 0;
		EXPECT_EQ(Row.Title.find("int + int"), std::string::npos);
	}
	EXPECT_EQ(NumOperatorAdd, 1);
	EXPECT_NE(FindRow(Rows, "Add", "Utilities|Array"), nullptr);
}

TEST_F(FActionMenuFixture, MenuIsTheSameFromBuildToBuild)
{
	UBlueprint* Blueprint = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuStable"));
	ASSERT_NE(Blueprint, nullptr);
	const std::vector<FMenuRow> First = MenuFor(Blueprint, EventGraphOf(Blueprint));
	const std::vector<FMenuRow> Second = MenuFor(Blueprint, EventGraphOf(Blueprint));
	ASSERT_EQ(First.size(), Second.size());
	for (size_t Index = 0; Index < First.size(); ++Index)
	{
		ASSERT_EQ(First[Index].Title, Second[Index].Title) << Index;
		ASSERT_EQ(First[Index].Category, Second[Index].Category) << Index;
	}
}

TEST_F(FActionMenuFixture, FunctionGraphMenuHoldsNoEventsOrLatentCalls)
{
	UBlueprint* Blueprint = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuFunction"));
	ASSERT_NE(Blueprint, nullptr);
	UEdGraph* Function = AddFunction(Blueprint, TEXT("DoThings"));
	const std::vector<FMenuRow> Rows = MenuFor(Blueprint, Function);

	for (const FMenuRow& Row : Rows)
	{
		EXPECT_NE(Row.NodeClass, "K2Node_Event") << Row.Title;
		EXPECT_NE(Row.NodeClass, "K2Node_CustomEvent") << Row.Title;
	}
	EXPECT_EQ(FindRow(Rows, "Event BeginPlay"), nullptr);
	EXPECT_EQ(FindRow(Rows, "Add Custom Event..."), nullptr);
	EXPECT_EQ(FindRow(Rows, "Delay"), nullptr);
	EXPECT_EQ(FindRow(Rows, "Add Timeline..."), nullptr);
	// What a function may do is still there.
	EXPECT_NE(FindRow(Rows, "Print String"), nullptr);
	EXPECT_NE(FindRow(Rows, "Branch"), nullptr);
	EXPECT_NE(FindRow(Rows, "Add Comment..."), nullptr);
}

TEST_F(FActionMenuFixture, EventsAndDispatchersFollowTheParentClass)
{
	UBlueprint* ActorBlueprint = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuParentActor"));
	UBlueprint* ObjectBlueprint = Create(EditorTest::FindClass(TEXT("/Script/CoreUObject.Object")), TEXT("BP_MenuParentObject"));
	ASSERT_NE(ActorBlueprint, nullptr);
	ASSERT_NE(ObjectBlueprint, nullptr);
	const std::vector<FMenuRow> ActorRows = MenuFor(ActorBlueprint, EventGraphOf(ActorBlueprint));
	const std::vector<FMenuRow> ObjectRows = MenuFor(ObjectBlueprint, EventGraphOf(ObjectBlueprint));

	// The Actor's implementable events and dispatchers belong to Actor Blueprints only.
	for (const char* Title : {"Event BeginPlay", "Bind Event to On Destroyed", "Unbind all Events from On Destroyed"})
	{
		EXPECT_NE(FindRow(ActorRows, Title), nullptr) << Title;
		EXPECT_EQ(FindRow(ObjectRows, Title), nullptr) << Title;
	}
	// A member function without a category sits under "Call Function" where it is the Blueprint's own, and under
	// its class elsewhere.
	EXPECT_NE(FindRow(ActorRows, "Get Net Update Frequency", "Call Function"), nullptr);
	EXPECT_NE(FindRow(ObjectRows, "Get Net Update Frequency", "Class|Actor"), nullptr);
	// Library calls and flow control suit both.
	EXPECT_NE(FindRow(ObjectRows, "Print String"), nullptr);
	EXPECT_NE(FindRow(ObjectRows, "Branch"), nullptr);
	EXPECT_NE(FindRow(ObjectRows, "Add Custom Event..."), nullptr);
}

TEST_F(FActionMenuFixture, PerformingAnActionPlacesItsNodeWithItsPins)
{
	struct FCase
	{
		const char* Title;
		const char* NodeClass;
		std::vector<const char*> Pins;
	};
	const FCase Cases[] = {
		{"Branch", "K2Node_IfThenElse", {"execute", "Condition", "then", "else"}},
		{"Print String", "K2Node_CallFunction", {"execute", "then", "InString", "Duration"}},
		{"Get Actor Location", "K2Node_CallFunction", {"self", "ReturnValue"}},
		{"Cast To Character", "K2Node_DynamicCast", {"execute", "then", "CastFailed", "Object", "AsCharacter"}},
		{"Get a reference to self", "K2Node_Self", {"self"}},
		{"Event BeginPlay", "K2Node_Event", {"then"}},
		{"Sequence", "K2Node_ExecutionSequence", {"execute", "then_0", "then_1"}},
	};

	UBlueprint* Blueprint = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuPerform"));
	ASSERT_NE(Blueprint, nullptr);
	UEdGraph* Graph = EventGraphOf(Blueprint);
	const std::vector<FMenuRow> Rows = MenuFor(Blueprint, Graph);

	int32 Offset = 0;
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(Case.Title);
		const FMenuRow* Row = FindRow(Rows, Case.Title);
		ASSERT_NE(Row, nullptr);
		Offset += 200;
		UEdGraphNode* Node = Row->Action->PerformAction(Graph, nullptr, FVector2f(float(Offset), 64.0f));
		ASSERT_NE(Node, nullptr);
		EXPECT_EQ(U8(Node->GetClass()->GetName()), Case.NodeClass);
		EXPECT_TRUE(Graph->Nodes.Contains(Node));
		for (const char* Pin : Case.Pins)
		{
			EXPECT_NE(Node->FindPin(FName(UTF8_TO_TCHAR(Pin))), nullptr) << Pin;
		}
		if (Case.NodeClass != std::string("K2Node_Event"))
		{
			EXPECT_EQ(Node->NodePosX, Offset);
			EXPECT_EQ(Node->NodePosY, 64);
		}
	}

	// An event exists once per Blueprint: asking again gives the same node.
	const int32 NodesBefore = Graph->Nodes.Num();
	UEdGraphNode* BeginPlay = FindRow(Rows, "Event BeginPlay")->Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 0.0f));
	UEdGraphNode* Again = FindRow(Rows, "Event BeginPlay")->Action->PerformAction(Graph, nullptr, FVector2f(500.0f, 0.0f));
	EXPECT_EQ(BeginPlay, Again);
	EXPECT_EQ(Graph->Nodes.Num(), NodesBefore);

	// Custom events are fresh each time, each with a name of its own.
	UK2Node_CustomEvent* First = Cast<UK2Node_CustomEvent>(FindRow(Rows, "Add Custom Event...")->Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 400.0f)));
	UK2Node_CustomEvent* Second = Cast<UK2Node_CustomEvent>(FindRow(Rows, "Add Custom Event...")->Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 600.0f)));
	ASSERT_NE(First, nullptr);
	ASSERT_NE(Second, nullptr);
	EXPECT_NE(First, Second);
	EXPECT_EQ(U8(First->CustomFunctionName), "CustomEvent");
	EXPECT_EQ(U8(Second->CustomFunctionName), "CustomEvent_0");

	// A timeline node comes with its template, named as the editor names new timelines.
	UK2Node_Timeline* Timeline = Cast<UK2Node_Timeline>(FindRow(Rows, "Add Timeline...")->Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 800.0f)));
	ASSERT_NE(Timeline, nullptr);
	EXPECT_EQ(U8(Timeline->TimelineName), "Timeline_0");
	EXPECT_NE(FBlueprintEditorUtils::FindTimelineTemplateByVariableName(Blueprint, Timeline->TimelineName), nullptr);
	EXPECT_NE(Timeline->FindPin(FName(TEXT("Play"))), nullptr);

	// The comment entry makes a comment box where the menu was opened.
	UEdGraphNode* Comment = FindRow(Rows, "Add Comment...")->Action->PerformAction(Graph, nullptr, FVector2f(32.0f, 48.0f));
	ASSERT_NE(Cast<UEdGraphNode_Comment>(Comment), nullptr);
	EXPECT_EQ(Comment->NodePosX, 32);
	EXPECT_EQ(Comment->NodePosY, 48);
}

TEST_F(FActionMenuFixture, PerformingFromAPinWiresTheNewNode)
{
	UBlueprint* Blueprint = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuWire"));
	ASSERT_NE(Blueprint, nullptr);
	UEdGraph* Graph = EventGraphOf(Blueprint);
	const std::vector<FMenuRow> Rows = MenuFor(Blueprint, Graph);
	UEdGraphNode* Event = FindRow(Rows, "Event BeginPlay")->Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 0.0f));
	ASSERT_NE(Event, nullptr);
	UEdGraphPin* Then = Event->FindPin(UEdGraphSchema_K2::PN_Then);
	ASSERT_NE(Then, nullptr);

	UEdGraphNode* Branch = FindRow(Rows, "Branch")->Action->PerformAction(Graph, Then, FVector2f(300.0f, 0.0f));
	ASSERT_NE(Branch, nullptr);
	ASSERT_EQ(Then->LinkedTo.Num(), 1);
	EXPECT_EQ(Then->LinkedTo[0]->GetOwningNode(), Branch);
	EXPECT_EQ(U8(Then->LinkedTo[0]->PinName), "execute");
}

TEST_F(FActionMenuFixture, OwnVariableAppearsOnceAddedAndRefreshed)
{
	UBlueprint* Blueprint = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuVars"));
	UBlueprint* Other = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuVarsOther"));
	ASSERT_NE(Blueprint, nullptr);
	ASSERT_NE(Other, nullptr);
	UEdGraph* Graph = EventGraphOf(Blueprint);
	EXPECT_EQ(FindRow(MenuFor(Blueprint, Graph), "Get Health"), nullptr);

	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Health"), EditorTest::PinType(UEdGraphSchema_K2::PC_Real, nullptr, UEdGraphSchema_K2::PC_Double)));
	FBlueprintActionDatabase::Get().RefreshAssetActions(Blueprint);

	const std::vector<FMenuRow> Rows = MenuFor(Blueprint, Graph);
	const FMenuRow* Getter = FindRow(Rows, "Get Health");
	const FMenuRow* Setter = FindRow(Rows, "Set Health");
	ASSERT_NE(Getter, nullptr);
	ASSERT_NE(Setter, nullptr);
	EXPECT_EQ(Getter->NodeClass, "K2Node_VariableGet");
	EXPECT_EQ(Setter->NodeClass, "K2Node_VariableSet");
	EXPECT_EQ(Getter->Category.rfind("Variables", 0), 0u) << Getter->Category;

	// Another Blueprint does not see it.
	EXPECT_EQ(FindRow(MenuFor(Other, EventGraphOf(Other)), "Get Health"), nullptr);

	UK2Node_VariableGet* Get = Cast<UK2Node_VariableGet>(Getter->Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 0.0f)));
	ASSERT_NE(Get, nullptr);
	EXPECT_EQ(U8(Get->VariableReference.GetMemberName()), "Health");
	ASSERT_NE(Get->FindPin(FName(TEXT("Health"))), nullptr);
	EXPECT_EQ(Get->FindPin(FName(TEXT("Health")))->Direction, EGPD_Output);

	// The menu notices changes by itself: a variable added or removed since the last menu is followed.
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Mana"), EditorTest::PinType(UEdGraphSchema_K2::PC_Int)));
	FBlueprintEditorUtils::RemoveMemberVariable(Blueprint, TEXT("Health"));
	const std::vector<FMenuRow> After = MenuFor(Blueprint, Graph);
	EXPECT_NE(FindRow(After, "Get Mana"), nullptr);
	EXPECT_EQ(FindRow(After, "Get Health"), nullptr);
	EXPECT_EQ(FindRow(MenuFor(Other, EventGraphOf(Other)), "Get Mana"), nullptr);
}

TEST_F(FActionMenuFixture, GraphWithoutBlueprintSchemaGetsNoBlueprintNodes)
{
	UBlueprint* Blueprint = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuPlainSchema"));
	ASSERT_NE(Blueprint, nullptr);
	UEdGraph* Plain = NewObject<UEdGraph>(Blueprint, TEXT("PlainGraph"));
	Plain->Schema = UEdGraphSchema::StaticClass();
	EXPECT_TRUE(MenuFor(Blueprint, Plain).empty());
}

TEST_F(FActionMenuFixture, ContextSensitiveMenuKeepsToItsTargetClasses)
{
	UBlueprint* Blueprint = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuTargets"));
	ASSERT_NE(Blueprint, nullptr);
	UEdGraph* Graph = EventGraphOf(Blueprint);
	FBlueprintActionContext Context;
	Context.Blueprints.Add(Blueprint);
	Context.Graphs.Add(Graph);

	auto Build = [&Context](uint32 Mask)
	{
		FBlueprintActionMenuBuilder Menu;
		FBlueprintActionMenuUtils::MakeContextMenu(Context, true, Mask, Menu);
		return ReadMenu(Menu);
	};

	// The Blueprint's own class: its members and library calls, not other classes' members.
	const std::vector<FMenuRow> Own = Build(EContextTargetFlags::TARGET_Blueprint | EContextTargetFlags::TARGET_BlueprintLibraries);
	EXPECT_NE(FindRow(Own, "Get Actor Location"), nullptr);
	EXPECT_NE(FindRow(Own, "Print String"), nullptr);
	EXPECT_EQ(FindRow(Own, "Jump"), nullptr);
	EXPECT_EQ(FindRow(Own, "Set Skeletal Mesh Asset"), nullptr);

	// Dragging from a Character pin brings the Character's members in.
	UEdGraphNode* Cast = FindRow(MenuFor(Blueprint, Graph), "Cast To Character")->Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 0.0f));
	ASSERT_NE(Cast, nullptr);
	UEdGraphPin* AsCharacter = Cast->FindPin(FName(TEXT("AsCharacter")));
	ASSERT_NE(AsCharacter, nullptr);
	Context.Pins.Add(AsCharacter);
	const std::vector<FMenuRow> FromPin = Build(EContextTargetFlags::ContextTargetFlags_MAX - 1);
	EXPECT_NE(FindRow(FromPin, "Jump"), nullptr);
	EXPECT_NE(FindRow(FromPin, "Get Actor Location"), nullptr);
	EXPECT_EQ(FindRow(FromPin, "Set Skeletal Mesh Asset"), nullptr);

	// Without the library flag, a context-sensitive menu leaves free functions out.
	const std::vector<FMenuRow> NoLibraries = Build(EContextTargetFlags::TARGET_Blueprint);
	EXPECT_EQ(FindRow(NoLibraries, "Print String"), nullptr);
	EXPECT_NE(FindRow(NoLibraries, "Get Actor Location"), nullptr);
}

TEST_F(FActionMenuFixture, WidgetEventGraphOffersTheWidgetsEvents)
{
	UBlueprint* Widget = Create(EditorTest::FindClass(TEXT("/Script/UMG.UserWidget")), TEXT("WBP_Menu"), BPTYPE_Normal, UWidgetBlueprint::StaticClass());
	ASSERT_NE(Widget, nullptr);
	ASSERT_NE(EventGraphOf(Widget), nullptr);
	const std::vector<FMenuRow> Rows = MenuFor(Widget, EventGraphOf(Widget));

	const FExpectedEntry Expected[] = {
		{"Event Construct", "Add Event|User Interface", "FBlueprintActionMenuItem", "K2Node_Event"},
		{"Event Pre Construct", "Add Event|User Interface", "FBlueprintActionMenuItem", "K2Node_Event"},
		{"Print String", "Development", "FBlueprintActionMenuItem", "K2Node_CallFunction"},
		{"Branch", "Utilities|Flow Control", "FBlueprintActionMenuItem", "K2Node_IfThenElse"},
	};
	for (const FExpectedEntry& Entry : Expected)
	{
		SCOPED_TRACE(Entry.Title);
		const FMenuRow* Row = FindRow(Rows, Entry.Title, Entry.Category);
		ASSERT_NE(Row, nullptr);
		EXPECT_EQ(Row->NodeClass, Entry.NodeClass);
	}
	// An Actor's events and timelines are not a widget's.
	EXPECT_EQ(FindRow(Rows, "Event BeginPlay"), nullptr);
	EXPECT_EQ(FindRow(Rows, "Event ActorBeginOverlap"), nullptr);
	EXPECT_EQ(FindRow(Rows, "Add Timeline..."), nullptr);

	UEdGraphNode* Construct = FindRow(Rows, "Event Construct")->Action->PerformAction(EventGraphOf(Widget), nullptr, FVector2f(0.0f, 0.0f));
	ASSERT_NE(Cast<UK2Node_Event>(Construct), nullptr);
	EXPECT_EQ(U8(Cast<UK2Node_Event>(Construct)->EventReference.GetMemberName()), "Construct");
}

TEST_F(FActionMenuFixture, ComponentsAndCompiledFunctionsAreOffered)
{
	UBlueprint* Blueprint = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuMembers"));
	ASSERT_NE(Blueprint, nullptr);
	ASSERT_NE(Blueprint->SimpleConstructionScript.Get(), nullptr);
	UEdGraph* Graph = EventGraphOf(Blueprint);
	EXPECT_EQ(FindRow(MenuFor(Blueprint, Graph), "Get Camera Mount"), nullptr);

	USCS_Node* Mount = Blueprint->SimpleConstructionScript->CreateNode(EditorTest::FindClass(TEXT("/Script/Engine.SceneComponent")), TEXT("CameraMount"));
	ASSERT_NE(Mount, nullptr);
	Blueprint->SimpleConstructionScript->AddNode(Mount);
	AddFunction(Blueprint, TEXT("ResetScore"));
	FKismetEditorUtilities::CompileBlueprint(Blueprint);

	const std::vector<FMenuRow> Rows = MenuFor(Blueprint, Graph);
	const FMenuRow* Component = FindRow(Rows, "Get Camera Mount");
	ASSERT_NE(Component, nullptr);
	EXPECT_EQ(Component->NodeClass, "K2Node_VariableGet");
	EXPECT_EQ(Component->Category, "Variables|Components");
	// A component is read, never replaced.
	EXPECT_EQ(FindRow(Rows, "Set Camera Mount"), nullptr);

	const FMenuRow* Function = FindRow(Rows, "Reset Score");
	ASSERT_NE(Function, nullptr);
	EXPECT_EQ(Function->NodeClass, "K2Node_CallFunction");
	UK2Node_CallFunction* Call = Cast<UK2Node_CallFunction>(Function->Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 0.0f)));
	ASSERT_NE(Call, nullptr);
	EXPECT_EQ(U8(Call->FunctionReference.GetMemberName()), "ResetScore");
	EXPECT_NE(Call->GetExecPin(), nullptr);

	UK2Node_VariableGet* Get = Cast<UK2Node_VariableGet>(Component->Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 200.0f)));
	ASSERT_NE(Get, nullptr);
	EXPECT_NE(Get->FindPin(FName(TEXT("CameraMount"))), nullptr);
}

TEST_F(FActionMenuFixture, EventDispatcherIsBoundAndCalledNotRead)
{
	UBlueprint* Blueprint = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuDispatcher"));
	ASSERT_NE(Blueprint, nullptr);
	// A dispatcher as the editor declares one: a delegate variable and its signature graph.
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("OnScored"), EditorTest::PinType(UEdGraphSchema_K2::PC_MCDelegate)));
	UEdGraph* Signature = FBlueprintEditorUtils::CreateNewGraph(Blueprint, TEXT("OnScored"), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
	Blueprint->DelegateSignatureGraphs.Add(Signature);
	Signature->GetSchema()->CreateDefaultNodesForGraph(*Signature);
	FKismetEditorUtilities::CompileBlueprint(Blueprint);

	const std::vector<FMenuRow> Rows = MenuFor(Blueprint, EventGraphOf(Blueprint));
	EXPECT_EQ(FindRow(Rows, "Get On Scored"), nullptr);
	EXPECT_EQ(FindRow(Rows, "Set On Scored"), nullptr);
	const FMenuRow* Bind = FindRow(Rows, "Bind Event to On Scored");
	const FMenuRow* Call = FindRow(Rows, "Call On Scored");
	ASSERT_NE(Bind, nullptr);
	ASSERT_NE(Call, nullptr);
	EXPECT_EQ(Bind->NodeClass, "K2Node_AddDelegate");
	EXPECT_EQ(Call->NodeClass, "K2Node_CallDelegate");
	EXPECT_EQ(Bind->Category.rfind("Event Dispatchers", 0), 0u) << Bind->Category;
	EXPECT_NE(Call->Action->PerformAction(EventGraphOf(Blueprint), nullptr, FVector2f(0.0f, 0.0f)), nullptr);
}
