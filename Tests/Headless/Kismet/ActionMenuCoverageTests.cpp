#include "ActionMenuTestUtils.h"

#include "Components/ActorComponent.h"
#include "EdGraph/EdGraphNode_Comment.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "BlueprintBoundEventNodeSpawner.h"
#include "K2Node_ComponentBoundEvent.h"
#include "K2Node_MathExpression.h"
#include "K2Node_Message.h"

using namespace ActionMenuTest;

// The entries that are not member calls: comments, math expressions, interface messages and the events bound to
// the Blueprint's components, graph by graph.

/**
 * Holds components the way a native parent class's default object does, in properties named otherwise than the
 * components themselves (the engine's Character keeps "CollisionCylinder" in CapsuleComponent).
 */
class UMenuTestComponentHolder : public UObject
{
	DECLARE_CLASS(UMenuTestComponentHolder, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/KismetTests"), NO_API)

public:
	TObjectPtr<UActorComponent> CapsuleComponent;
	TObjectPtr<UActorComponent> Pivot;
};

IMPLEMENT_CLASS(UMenuTestComponentHolder,
	UE_NATIVE_PROPERTY(FObjectProperty, CapsuleComponent, CPF_BlueprintVisible | CPF_BlueprintReadOnly | CPF_TObjectPtr, UActorComponent::StaticClass());
	UE_NATIVE_PROPERTY(FObjectProperty, Pivot, CPF_BlueprintVisible | CPF_BlueprintReadOnly | CPF_TObjectPtr, UActorComponent::StaticClass());
)

namespace
{
	enum class EGraphKind
	{
		Event,
		Function,
	};

	struct FCoverageRow
	{
		const char* Title;
		const char* Category;
		const char* NodeClass;
		bool bInEventGraph;
		bool bInFunctionGraph;
	};

	const FCoverageRow GCoverage[] = {
		{"Add Comment...", "", "EdGraphNode_Comment", true, true},
		{"Add Math Expression...", "", "K2Node_MathExpression", true, true},
		{"Add On Component Begin Overlap", "Add Event for CollisionComp|Collision", "K2Node_ComponentBoundEvent", true, false},
		{"Add On Component Hit", "Add Event for CollisionComp|Collision", "K2Node_ComponentBoundEvent", true, false},
		{"Add On Component Begin Overlap", "Add Event for Mesh|Collision", "K2Node_ComponentBoundEvent", true, false},
		{"Ping (Message)", nullptr, "K2Node_Message", true, true},
		{"Event BeginPlay", "Add Event", "K2Node_Event", true, false},
	};

	class FActionMenuCoverageTest : public FActionMenuFixture
	{
	protected:
		/** An actor Blueprint with two colliding components and a scene component, and an interface to message. */
		void SetUp() override
		{
			UBlueprint* Interface = Create(EditorTest::FindClass(TEXT("/Script/CoreUObject.Interface")), TEXT("BPI_MenuPinger"), BPTYPE_Interface);
			ASSERT_NE(Interface, nullptr);
			AddFunction(Interface, TEXT("Ping"));
			FKismetEditorUtilities::CompileBlueprint(Interface);

			Blueprint = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuCoverage"));
			ASSERT_NE(Blueprint, nullptr);
			USimpleConstructionScript* SCS = Blueprint->SimpleConstructionScript.Get();
			ASSERT_NE(SCS, nullptr);
			CollisionComp = AddComponent(TEXT("/Script/Engine.SphereComponent"), TEXT("CollisionComp"));
			Mesh = AddComponent(TEXT("/Script/Engine.StaticMeshComponent"), TEXT("Mesh"));
			Mount = AddComponent(TEXT("/Script/Engine.SceneComponent"), TEXT("CameraMount"));
			Function = AddFunction(Blueprint, TEXT("DoThings"));
			FKismetEditorUtilities::CompileBlueprint(Blueprint);
		}

		USCS_Node* AddComponent(const TCHAR* ClassPath, const TCHAR* Name)
		{
			USCS_Node* Node = Blueprint->SimpleConstructionScript->CreateNode(EditorTest::FindClass(ClassPath), FName(Name));
			Blueprint->SimpleConstructionScript->AddNode(Node);
			return Node;
		}

		UEdGraph* GraphOf(EGraphKind Kind) const { return Kind == EGraphKind::Event ? EventGraphOf(Blueprint) : Function; }

		UBlueprint* Blueprint = nullptr;
		UEdGraph* Function = nullptr;
		USCS_Node* CollisionComp = nullptr;
		USCS_Node* Mesh = nullptr;
		USCS_Node* Mount = nullptr;
	};

	int32 CountRows(const std::vector<FMenuRow>& Rows, const std::string& Title, const std::string& Category)
	{
		int32 Count = 0;
		for (const FMenuRow& Row : Rows)
		{
			Count += (Row.Title == Title && Row.Category == Category) ? 1 : 0;
		}
		return Count;
	}
}

TEST_F(FActionMenuCoverageTest, EachGraphOffersWhatTheEditorOffersThere)
{
	for (EGraphKind Kind : {EGraphKind::Event, EGraphKind::Function})
	{
		const std::vector<FMenuRow> Rows = MenuFor(Blueprint, GraphOf(Kind));
		for (const FCoverageRow& Expected : GCoverage)
		{
			SCOPED_TRACE(std::string(Expected.Title) + (Kind == EGraphKind::Event ? " in the event graph" : " in a function graph"));
			const bool bExpected = Kind == EGraphKind::Event ? Expected.bInEventGraph : Expected.bInFunctionGraph;
			const FMenuRow* Row = Expected.Category ? FindRow(Rows, Expected.Title, Expected.Category) : FindRow(Rows, Expected.Title);
			if (!bExpected)
			{
				EXPECT_EQ(Row, nullptr);
				continue;
			}
			ASSERT_NE(Row, nullptr);
			EXPECT_EQ(Row->TypeId, "FBlueprintActionMenuItem");
			EXPECT_EQ(Row->NodeClass, Expected.NodeClass);
			if (Expected.Category)
			{
				EXPECT_EQ(CountRows(Rows, Expected.Title, Expected.Category), 1);
			}
		}
		// No component event is ever offered unbound, nor for a component whose class lacks the delegate.
		for (const FMenuRow& Row : Rows)
		{
			if (Row.NodeClass == "K2Node_ComponentBoundEvent")
			{
				EXPECT_EQ(Row.Category.rfind("Add Event for ", 0), 0u) << Row.Title;
				EXPECT_EQ(Row.Category.rfind("Add Event for CameraMount|Collision", 0), std::string::npos) << Row.Title;
			}
		}
	}
}

TEST_F(FActionMenuCoverageTest, MessageSitsBesideTheInterfaceCallItSends)
{
	const std::vector<FMenuRow> Rows = MenuFor(Blueprint, EventGraphOf(Blueprint));
	const FMenuRow* Message = FindRow(Rows, "Ping (Message)");
	const FMenuRow* Call = FindRow(Rows, "Ping");
	ASSERT_NE(Message, nullptr);
	ASSERT_NE(Call, nullptr);
	EXPECT_EQ(Call->NodeClass, "K2Node_CallFunction");
	EXPECT_EQ(Message->Category, Call->Category);

	UK2Node_Message* Node = Cast<UK2Node_Message>(Message->Action->PerformAction(EventGraphOf(Blueprint), nullptr, FVector2f(0.0f, 0.0f)));
	ASSERT_NE(Node, nullptr);
	EXPECT_EQ(U8(Node->FunctionReference.GetMemberName()), "Ping");
	EXPECT_EQ(U8(Node->GetNodeTitle(ENodeTitleType::MenuTitle)), "Ping (Message)");
	EXPECT_EQ(U8(Node->GetNodeTitle(ENodeTitleType::FullTitle)).find("(Message)"), std::string::npos);
	// The target is any object: whether it implements the interface is found out when the message is sent.
	const UEdGraphPin* Target = Node->FindPin(UEdGraphSchema_K2::PN_Self);
	ASSERT_NE(Target, nullptr);
	EXPECT_EQ(Target->PinType.PinCategory, UEdGraphSchema_K2::PC_Object);
	EXPECT_EQ(Target->PinType.PinSubCategoryObject.Get(), UObject::StaticClass());
	EXPECT_NE(Node->GetExecPin(), nullptr);

	// Sent to the Blueprint itself, which does not implement the interface, it still compiles.
	ASSERT_NE(FindRow(Rows, "Get a reference to self"), nullptr);
	ASSERT_NE(FindRow(Rows, "Event BeginPlay"), nullptr);
	UEdGraphNode* Self = FindRow(Rows, "Get a reference to self")->Action->PerformAction(EventGraphOf(Blueprint), nullptr, FVector2f(-200.0f, 0.0f));
	ASSERT_NE(Self, nullptr);
	ASSERT_TRUE(GetDefault<UEdGraphSchema_K2>()->TryCreateConnection(Self->FindPin(UEdGraphSchema_K2::PN_Self), Node->FindPin(UEdGraphSchema_K2::PN_Self)));
	UEdGraphNode* BeginPlay = FindRow(Rows, "Event BeginPlay")->Action->PerformAction(EventGraphOf(Blueprint), nullptr, FVector2f(-400.0f, 0.0f));
	ASSERT_TRUE(GetDefault<UEdGraphSchema_K2>()->TryCreateConnection(BeginPlay->FindPin(UEdGraphSchema_K2::PN_Then), Node->GetExecPin()));
	FCompilerResultsLog Log;
	FKismetEditorUtilities::CompileBlueprint(Blueprint, EBlueprintCompileOptions::None, &Log);
	EXPECT_EQ(Log.NumErrors, 0) << EditorTest::Messages(Log);
}

TEST_F(FActionMenuCoverageTest, ComponentEventIsBoundToItsComponentOnce)
{
	UEdGraph* Graph = EventGraphOf(Blueprint);
	const std::vector<FMenuRow> Rows = MenuFor(Blueprint, Graph);
	const FMenuRow* Overlap = FindRow(Rows, "Add On Component Begin Overlap", "Add Event for CollisionComp|Collision");
	ASSERT_NE(Overlap, nullptr);

	const int32 NodesBefore = Graph->Nodes.Num();
	UK2Node_ComponentBoundEvent* Event = Cast<UK2Node_ComponentBoundEvent>(Overlap->Action->PerformAction(Graph, nullptr, FVector2f(64.0f, 32.0f)));
	ASSERT_NE(Event, nullptr);
	EXPECT_EQ(Graph->Nodes.Num(), NodesBefore + 1);
	EXPECT_EQ(U8(Event->ComponentPropertyName), "CollisionComp");
	EXPECT_EQ(U8(Event->DelegatePropertyName), "OnComponentBeginOverlap");
	EXPECT_EQ(U8(Event->GetNodeTitle(ENodeTitleType::FullTitle)), "On Component Begin Overlap (CollisionComp)");
	EXPECT_EQ(Event->NodePosX, 64);
	for (const char* Pin : {"then", "OverlappedComponent", "OtherActor", "OtherComp", "OtherBodyIndex", "bFromSweep", "SweepResult"})
	{
		EXPECT_NE(Event->FindPin(FName(UTF8_TO_TCHAR(Pin))), nullptr) << Pin;
	}
	EXPECT_TRUE(Event->IsDelegateValid());

	// The component's delegate is bound once per Blueprint; asking again gives the same node back.
	UEdGraphNode* Again = Overlap->Action->PerformAction(Graph, nullptr, FVector2f(400.0f, 0.0f));
	EXPECT_EQ(Again, Event);
	EXPECT_EQ(Graph->Nodes.Num(), NodesBefore + 1);

	// The same delegate of another component is another event.
	const FMenuRow* MeshOverlap = FindRow(Rows, "Add On Component Begin Overlap", "Add Event for Mesh|Collision");
	ASSERT_NE(MeshOverlap, nullptr);
	UK2Node_ComponentBoundEvent* MeshEvent = Cast<UK2Node_ComponentBoundEvent>(MeshOverlap->Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 400.0f)));
	ASSERT_NE(MeshEvent, nullptr);
	EXPECT_NE(MeshEvent, Event);
	EXPECT_EQ(U8(MeshEvent->ComponentPropertyName), "Mesh");
	EXPECT_NE(MeshEvent->CustomFunctionName, Event->CustomFunctionName);
}

TEST_F(FActionMenuCoverageTest, SelectedComponentsNarrowTheComponentSections)
{
	FBlueprintActionContext Context;
	Context.Blueprints.Add(Blueprint);
	Context.Graphs.Add(EventGraphOf(Blueprint));
	Context.SelectedObjects.Add(Mesh);
	FBlueprintActionMenuBuilder Menu;
	FBlueprintActionMenuUtils::MakeContextMenu(Context, false, EContextTargetFlags::ContextTargetFlags_MAX - 1, Menu);
	const std::vector<FMenuRow> Rows = ReadMenu(Menu);

	EXPECT_NE(FindRow(Rows, "Add On Component Begin Overlap", "Add Event for Mesh|Collision"), nullptr);
	EXPECT_EQ(FindRow(Rows, "Add On Component Begin Overlap", "Add Event for CollisionComp|Collision"), nullptr);
	// The rest of the menu does not depend on the selection.
	EXPECT_NE(FindRow(Rows, "Print String"), nullptr);
	EXPECT_NE(FindRow(Rows, "Add Comment..."), nullptr);
}

TEST_F(FActionMenuCoverageTest, MathExpressionAndCommentAreFreshNodesEachTime)
{
	UEdGraph* Graph = GraphOf(EGraphKind::Function);
	const std::vector<FMenuRow> Rows = MenuFor(Blueprint, Graph);
	for (const char* Title : {"Add Math Expression...", "Add Comment..."})
	{
		SCOPED_TRACE(Title);
		const FMenuRow* Row = FindRow(Rows, Title);
		ASSERT_NE(Row, nullptr);
		UEdGraphNode* First = Row->Action->PerformAction(Graph, nullptr, FVector2f(16.0f, 16.0f));
		UEdGraphNode* Second = Row->Action->PerformAction(Graph, nullptr, FVector2f(16.0f, 316.0f));
		ASSERT_NE(First, nullptr);
		ASSERT_NE(Second, nullptr);
		EXPECT_NE(First, Second);
		EXPECT_TRUE(Graph->Nodes.Contains(First));
		EXPECT_EQ(Second->NodePosY, 316);
	}
	EXPECT_NE(Cast<UK2Node_MathExpression>(FindRow(Rows, "Add Math Expression...")->Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 0.0f))), nullptr);
	EXPECT_NE(Cast<UEdGraphNode_Comment>(FindRow(Rows, "Add Comment...")->Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 0.0f))), nullptr);
}

TEST_F(FActionMenuFixture, ComponentTemplatesAreNamedByThePropertyHoldingThem)
{
	UMenuTestComponentHolder* Holder = NewObject<UMenuTestComponentHolder>(GetTransientPackage(), TEXT("MenuTestHolder"));
	Holder->CapsuleComponent = NewObject<UActorComponent>(Holder, EditorTest::FindClass(TEXT("/Script/Engine.SphereComponent")), TEXT("CollisionCylinder"));
	Holder->Pivot = NewObject<UActorComponent>(Holder, EditorTest::FindClass(TEXT("/Script/Engine.SceneComponent")), TEXT("PivotPoint"));
	UActorComponent* Loose = NewObject<UActorComponent>(Holder, EditorTest::FindClass(TEXT("/Script/Engine.SphereComponent")), TEXT("Loose"));

	// The spawner the database holds for the primitive component's hit delegate.
	const UBlueprintBoundEventNodeSpawner* HitSpawner = nullptr;
	const FBlueprintActionDatabase::FActionList* Actions = FBlueprintActionDatabase::Get().GetAllActions().Find(EditorTest::FindClass(TEXT("/Script/Engine.PrimitiveComponent")));
	ASSERT_NE(Actions, nullptr);
	for (const UBlueprintNodeSpawner* Spawner : *Actions)
	{
		const UBlueprintBoundEventNodeSpawner* Bound = Cast<UBlueprintBoundEventNodeSpawner>(Spawner);
		if (Bound && Bound->GetEventDelegate() && Bound->GetEventDelegate()->GetName() == TEXT("OnComponentHit"))
		{
			HitSpawner = Bound;
		}
	}
	ASSERT_NE(HitSpawner, nullptr);

	FName Variable;
	UClass* ComponentClass = nullptr;
	ASSERT_TRUE(UBlueprintBoundEventNodeSpawner::ResolveComponentBinding(Holder->CapsuleComponent, Variable, ComponentClass));
	EXPECT_EQ(U8(Variable), "CapsuleComponent");
	EXPECT_EQ(ComponentClass, EditorTest::FindClass(TEXT("/Script/Engine.SphereComponent")));
	EXPECT_TRUE(HitSpawner->IsBindingCompatible(Holder->CapsuleComponent));
	// A scene component has no hit delegate; a component no property holds, and anything not a component, name nothing.
	EXPECT_FALSE(HitSpawner->IsBindingCompatible(Holder->Pivot));
	EXPECT_FALSE(UBlueprintBoundEventNodeSpawner::ResolveComponentBinding(Loose, Variable, ComponentClass));
	EXPECT_FALSE(UBlueprintBoundEventNodeSpawner::ResolveComponentBinding(Holder, Variable, ComponentClass));

	// Bound to the template, the spawner places the event under the property's name; unbound it places nothing.
	UBlueprint* Blueprint = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuHeldComponents"));
	ASSERT_NE(Blueprint, nullptr);
	EXPECT_EQ(HitSpawner->Invoke(EventGraphOf(Blueprint), IBlueprintNodeBinder::FBindingSet(), FVector2D(0.0, 0.0)), nullptr);
	IBlueprintNodeBinder::FBindingSet Binding;
	Binding.Add(Holder->CapsuleComponent);
	UK2Node_ComponentBoundEvent* Event = Cast<UK2Node_ComponentBoundEvent>(HitSpawner->Invoke(EventGraphOf(Blueprint), Binding, FVector2D(0.0, 0.0)));
	ASSERT_NE(Event, nullptr);
	EXPECT_EQ(U8(Event->GetNodeTitle(ENodeTitleType::FullTitle)), "On Component Hit (CapsuleComponent)");
}

TEST_F(FActionMenuCoverageTest, PlacedMessagesAndBoundEventsSurviveSaveAndLoad)
{
	UEdGraph* Graph = EventGraphOf(Blueprint);
	const std::vector<FMenuRow> Rows = MenuFor(Blueprint, Graph);
	const FMenuRow* PingRow = FindRow(Rows, "Ping (Message)");
	const FMenuRow* HitRow = FindRow(Rows, "Add On Component Hit", "Add Event for CollisionComp|Collision");
	ASSERT_NE(PingRow, nullptr);
	ASSERT_NE(HitRow, nullptr);
	ASSERT_NE(PingRow->Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 0.0f)), nullptr);
	ASSERT_NE(HitRow->Action->PerformAction(Graph, nullptr, FVector2f(0.0f, 300.0f)), nullptr);
	FKismetEditorUtilities::CompileBlueprint(Blueprint);

	UBlueprint* Loaded = SaveAndReload(Blueprint);
	ASSERT_NE(Loaded, nullptr);
	const UK2Node_Message* Message = nullptr;
	const UK2Node_ComponentBoundEvent* Bound = nullptr;
	for (UEdGraphNode* Node : EventGraphOf(Loaded)->Nodes)
	{
		Message = Message ? Message : Cast<UK2Node_Message>(Node);
		Bound = Bound ? Bound : Cast<UK2Node_ComponentBoundEvent>(Node);
	}
	ASSERT_NE(Message, nullptr);
	ASSERT_NE(Bound, nullptr);
	EXPECT_EQ(U8(Message->GetNodeTitle(ENodeTitleType::MenuTitle)), "Ping (Message)");
	EXPECT_EQ(U8(Bound->GetNodeTitle(ENodeTitleType::FullTitle)), "On Component Hit (CollisionComp)");
	EXPECT_NE(Bound->FindPin(FName(TEXT("NormalImpulse"))), nullptr);
	// Loaded again, the menu still knows the event is there.
	const std::vector<FMenuRow> LoadedRows = MenuFor(Loaded, EventGraphOf(Loaded));
	const FMenuRow* Hit = FindRow(LoadedRows, "Add On Component Hit", "Add Event for CollisionComp|Collision");
	ASSERT_NE(Hit, nullptr);
	EXPECT_EQ(Hit->Action->PerformAction(EventGraphOf(Loaded), nullptr, FVector2f(0.0f, 0.0f)), Bound);
}

TEST_F(FActionMenuFixture, RefreshingOneClassKeepsWhatOtherFamiliesFileUnderIt)
{
	UBlueprint* Blueprint = Create(EditorTest::FindClass(TEXT("/Script/Engine.Actor")), TEXT("BP_MenuRefreshClass"));
	ASSERT_NE(Blueprint, nullptr);
	const std::vector<FMenuRow> Before = MenuFor(Blueprint, EventGraphOf(Blueprint));

	// Casts are filed under their target class, and the node families under their node class; refreshing those
	// classes must bring every entry back once.
	FBlueprintActionDatabase::Get().RefreshClassActions(EditorTest::FindClass(TEXT("/Script/Engine.Character")));
	FBlueprintActionDatabase::Get().RefreshClassActions(EditorTest::FindClass(TEXT("/Script/BlueprintGraph.K2Node_IfThenElse")));
	FBlueprintActionDatabase::Get().RefreshClassActions(EditorTest::FindClass(TEXT("/Script/UnrealEd.EdGraphNode_Comment")));
	const std::vector<FMenuRow> After = MenuFor(Blueprint, EventGraphOf(Blueprint));

	EXPECT_EQ(After.size(), Before.size());
	for (const char* Title : {"Cast To Character", "Jump", "Branch", "Add Comment..."})
	{
		int32 Count = 0;
		for (const FMenuRow& Row : After)
		{
			Count += Row.Title == Title ? 1 : 0;
		}
		EXPECT_EQ(Count, 1) << Title;
	}
}
