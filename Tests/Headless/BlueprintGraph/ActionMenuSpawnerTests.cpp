// The action menu's parts below the editor: list builders, node spawners, the database and its filter, on a
// Blueprint made by hand (no compiler: its members are what it declares).

#include <gtest/gtest.h>

#include <string>

#include "BlueprintActionDatabase.h"
#include "BlueprintActionFilter.h"
#include "BlueprintActionMenuItem.h"
#include "BlueprintEventNodeSpawner.h"
#include "BlueprintFunctionNodeSpawner.h"
#include "BlueprintVariableNodeSpawner.h"
#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "EdGraphSchema_K2_Actions.h"
#include "Engine/Blueprint.h"
#include "HAL/PlatformMisc.h"
#include "Headless/Core/StringTestUtils.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "K2Node_CallFunction.h"
#include "K2Node_Event.h"
#include "K2Node_FunctionEntry.h"
#include "K2Node_IfThenElse.h"
#include "K2Node_VariableGet.h"
#include "K2Node_VariableSet.h"
#include "Modules/ModuleManager.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

namespace
{
	inline std::string U8(const FText& Text) { return ::U8(Text.ToString()); }

	UFunction* FindFunction(const TCHAR* ClassPath, const TCHAR* Name)
	{
		UClass* Class = FindObject<UClass>(nullptr, ClassPath);
		return Class ? Class->FindFunctionByName(FName(Name)) : nullptr;
	}

	class FActionMenuSpawnerTest : public ::testing::Test
	{
	protected:
		FActionMenuSpawnerTest()
			: Project(TEXT("ActionMenuSpawner"))
		{
			Project.Open();
			FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
			FPlatformMisc::SeedGuidGenerator(5);
			Actor = FindObject<UClass>(nullptr, TEXT("/Script/Engine.Actor"));
		}

		~FActionMenuSpawnerTest() override
		{
			for (UPackage* Package : Packages)
			{
				TArray<UObject*> Inner;
				GetObjectsWithOuter(Package, Inner, true);
				for (UObject* Object : Inner)
				{
					Object->ClearFlags(RF_Standalone);
					Object->MarkAsGarbage();
				}
				Package->MarkAsGarbage();
			}
			CollectGarbage(RF_NoFlags);
		}

		/** A Blueprint of ParentClass with an event graph and a function graph, filed as the editor files them. */
		UBlueprint* MakeBlueprint(UClass* ParentClass, const TCHAR* Name)
		{
			UPackage* Package = CreatePackage(*FString::Printf(TEXT("/Game/Menu/%s"), Name));
			Packages.Add(Package);
			UBlueprint* Blueprint = NewObject<UBlueprint>(Package, Name, RF_Public | RF_Standalone);
			Blueprint->ParentClass = ParentClass;
			UEdGraph* EventGraph = NewObject<UEdGraph>(Blueprint, TEXT("EventGraph"));
			EventGraph->Schema = UEdGraphSchema_K2::StaticClass();
			Blueprint->UbergraphPages.Add(EventGraph);
			UEdGraph* Function = NewObject<UEdGraph>(Blueprint, TEXT("MyFunction"));
			Function->Schema = UEdGraphSchema_K2::StaticClass();
			Blueprint->FunctionGraphs.Add(Function);
			return Blueprint;
		}

		FTempProjectFolder Project;
		UClass* Actor = nullptr;
		TArray<UPackage*> Packages;
	};

	/** A bare action with a title, for the list builder. */
	TSharedPtr<FEdGraphSchemaAction> Action(const TCHAR* Title, const TCHAR* Category = TEXT(""))
	{
		return MakeShared<FEdGraphSchemaAction>(FText::FromString(Category), FText::FromString(Title), FText(), 0);
	}
}

TEST(ActionMenuListBuilder, KeepsEntriesInOrderAndRefusesNulls)
{
	FGraphActionListBuilderBase List;
	List.AddAction(Action(TEXT("A")));
	List.AddAction(nullptr);
	List.AddActionList({Action(TEXT("B1"), TEXT("Flow|Loops")), nullptr, Action(TEXT("B2"))}, TEXT("Root"));
	List.AddActionList({nullptr});
	ASSERT_EQ(List.GetNumActions(), 2);
	EXPECT_EQ(U8(List.GetSchemaAction(0)->GetMenuDescription()), "A");
	// A group answers with its first action and keeps the others.
	EXPECT_EQ(U8(List.GetSchemaAction(1)->GetMenuDescription()), "B1");
	EXPECT_EQ(List.GetAction(1).Actions.Num(), 2);
	TArray<FString> Chain;
	List.GetAction(1).GetCategoryChain(Chain);
	ASSERT_EQ(Chain.Num(), 3);
	EXPECT_EQ(::U8(Chain[0]), "Root");
	EXPECT_EQ(::U8(Chain[2]), "Loops");
	EXPECT_FALSE(List.GetSchemaAction(2).IsValid());
	EXPECT_FALSE(List.GetSchemaAction(-1).IsValid());

	FGraphContextMenuBuilder Other(nullptr);
	Other.AddAction(Action(TEXT("C")));
	List.Append(Other);
	List.Append(List);
	ASSERT_EQ(List.GetNumActions(), 6);
	EXPECT_EQ(U8(List.GetSchemaAction(2)->GetMenuDescription()), "C");
	EXPECT_EQ(U8(List.GetSchemaAction(5)->GetMenuDescription()), "C");
	List.Empty();
	EXPECT_EQ(List.GetNumActions(), 0);
}

TEST_F(FActionMenuSpawnerTest, FunctionSpawnersDescribeTheCallAsTheMenuShowsIt)
{
	struct FCase
	{
		const TCHAR* Class;
		const TCHAR* Function;
		const char* MenuName;
		const char* Category;
		const char* Keyword;
		const char* NodeClass;
	};
	const FCase Cases[] = {
		{TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"), "Print String", "Development", "log", "K2Node_CallFunction"},
		{TEXT("/Script/Engine.Actor"), TEXT("K2_GetActorLocation"), "Get Actor Location", "Transformation", "position", "K2Node_CallFunction"},
		{TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("Delay"), "Delay", "Utilities|Flow Control", "sleep", "K2Node_CallFunction"},
		{TEXT("/Script/Engine.KismetMathLibrary"), TEXT("Add_IntInt"), "Add", "Utilities|Operators", "+", "K2Node_PromotableOperator"},
		{TEXT("/Script/Engine.KismetMathLibrary"), TEXT("Greater_DoubleDouble"), "Greater", "Utilities|Operators", ">", "K2Node_PromotableOperator"},
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(Case.MenuName);
		UFunction* Function = FindFunction(Case.Class, Case.Function);
		ASSERT_NE(Function, nullptr);
		UBlueprintFunctionNodeSpawner* Spawner = UBlueprintFunctionNodeSpawner::Create(Function);
		ASSERT_NE(Spawner, nullptr);
		const FBlueprintActionUiSpec Spec = Spawner->GetUiSpec(FBlueprintActionContext(), IBlueprintNodeBinder::FBindingSet());
		EXPECT_EQ(U8(Spec.MenuName), Case.MenuName);
		EXPECT_EQ(U8(Spec.Category), Case.Category);
		EXPECT_NE(U8(Spec.Keywords).find(Case.Keyword), std::string::npos) << U8(Spec.Keywords);
		EXPECT_EQ(::U8(Spawner->NodeClass->GetName()), Case.NodeClass);
	}

	// Every operand type of an operator shares one spawner; a plain call keeps its own function.
	UFunction* AddInt = FindFunction(TEXT("/Script/Engine.KismetMathLibrary"), TEXT("Add_IntInt"));
	UFunction* AddDouble = FindFunction(TEXT("/Script/Engine.KismetMathLibrary"), TEXT("Add_DoubleDouble"));
	ASSERT_NE(AddDouble, nullptr);
	EXPECT_EQ(UBlueprintFunctionNodeSpawner::Create(AddInt), UBlueprintFunctionNodeSpawner::Create(AddDouble));
	// Struct operands come by const reference and fold into the same operator.
	UFunction* AddVector4 = FindFunction(TEXT("/Script/Engine.KismetMathLibrary"), TEXT("Add_Vector4Vector4"));
	ASSERT_NE(AddVector4, nullptr);
	EXPECT_EQ(UBlueprintFunctionNodeSpawner::Create(AddVector4), UBlueprintFunctionNodeSpawner::Create(AddInt));
	// A commutative operator that is not one of the promotable ones keeps its own node.
	UFunction* BooleanAnd = FindFunction(TEXT("/Script/Engine.KismetMathLibrary"), TEXT("BooleanAND"));
	ASSERT_NE(BooleanAnd, nullptr);
	EXPECT_EQ(::U8(UBlueprintFunctionNodeSpawner::Create(BooleanAnd)->NodeClass->GetName()), "K2Node_CommutativeAssociativeBinaryOperator");
	UFunction* Print = FindFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"));
	EXPECT_EQ(UBlueprintFunctionNodeSpawner::Create(Print)->GetFunction(), Print);
	EXPECT_EQ(UBlueprintFunctionNodeSpawner::Create(nullptr), nullptr);
}

TEST_F(FActionMenuSpawnerTest, InvokePlacesANodeWithGuidPinsAndPosition)
{
	UBlueprint* Blueprint = MakeBlueprint(Actor, TEXT("BP_Invoke"));
	UEdGraph* Graph = Blueprint->UbergraphPages[0];
	UBlueprintFunctionNodeSpawner* Spawner = UBlueprintFunctionNodeSpawner::Create(FindFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString")));
	ASSERT_NE(Spawner, nullptr);

	UK2Node_CallFunction* Node = Cast<UK2Node_CallFunction>(Spawner->Invoke(Graph, IBlueprintNodeBinder::FBindingSet(), FVector2D(96.0, -32.0)));
	ASSERT_NE(Node, nullptr);
	EXPECT_TRUE(Graph->Nodes.Contains(Node));
	EXPECT_TRUE(Node->NodeGuid.IsValid());
	EXPECT_EQ(Node->NodePosX, 96);
	EXPECT_EQ(Node->NodePosY, -32);
	EXPECT_EQ(Node->GetTargetFunction(), Spawner->GetFunction());
	EXPECT_NE(Node->FindPin(FName(TEXT("InString"))), nullptr);
	EXPECT_NE(Node->GetExecPin(), nullptr);

	// Through a menu item the same spawner wires the new node to the pin it was dragged from.
	FBlueprintActionMenuItem Item(UBlueprintNodeSpawner::Create<UK2Node_IfThenElse>(), FBlueprintActionUiSpec());
	UEdGraphNode* Branch = Item.PerformAction(Graph, Node->GetThenPin(), FVector2f(400.0f, 0.0f));
	ASSERT_NE(Branch, nullptr);
	ASSERT_EQ(Node->GetThenPin()->LinkedTo.Num(), 1);
	EXPECT_EQ(Node->GetThenPin()->LinkedTo[0]->GetOwningNode(), Branch);

	// Bad input gets nothing, never a crash.
	EXPECT_EQ(Spawner->Invoke(nullptr, IBlueprintNodeBinder::FBindingSet(), FVector2D()), nullptr);
	EXPECT_EQ(Item.PerformAction(nullptr, nullptr, FVector2f()), nullptr);
	EXPECT_EQ(UBlueprintNodeSpawner::Create(UK2Node::StaticClass()), nullptr);
}

TEST_F(FActionMenuSpawnerTest, DatabaseFollowsTheVariablesABlueprintDeclares)
{
	UBlueprint* Blueprint = MakeBlueprint(Actor, TEXT("BP_Vars"));
	FBlueprintActionDatabase& Database = FBlueprintActionDatabase::Get();
	EXPECT_GT(Database.GetNumActions(), 1000);

	auto VariableActions = [&Database, Blueprint]()
	{
		std::string Names;
		if (const FBlueprintActionDatabase::FActionList* Actions = Database.GetAllActions().Find(Blueprint))
		{
			for (UBlueprintNodeSpawner* Spawner : *Actions)
			{
				Names += U8(Spawner->GetUiSpec(FBlueprintActionContext(), IBlueprintNodeBinder::FBindingSet()).MenuName) + ";";
			}
		}
		return Names;
	};

	FBPVariableDescription Speed;
	Speed.VarName = TEXT("Speed");
	Speed.VarGuid = FGuid::NewGuid();
	Speed.VarType.PinCategory = UEdGraphSchema_K2::PC_Int;
	Blueprint->NewVariables.Add(Speed);
	FBPVariableDescription Alive = Speed;
	Alive.VarName = TEXT("bIsAlive");
	Alive.VarGuid = FGuid::NewGuid();
	Alive.VarType.PinCategory = UEdGraphSchema_K2::PC_Boolean;
	Alive.PropertyFlags = CPF_BlueprintReadOnly;
	Blueprint->NewVariables.Add(Alive);

	Database.RefreshAssetActions(Blueprint);
	// A read-only variable has no setter; a bool's "b" prefix is not shown.
	EXPECT_EQ(VariableActions(), "Get Speed;Set Speed;Get Is Alive;");

	Blueprint->NewVariables.RemoveAt(0);
	Database.RefreshAssetActions(Blueprint);
	EXPECT_EQ(VariableActions(), "Get Is Alive;");
	Database.ClearAssetActions(Blueprint);
	EXPECT_EQ(VariableActions(), "");
}

TEST_F(FActionMenuSpawnerTest, FilterOffersWhatTheGraphCanHold)
{
	UBlueprint* Blueprint = MakeBlueprint(Actor, TEXT("BP_Filter"));
	UBlueprint* ObjectBlueprint = MakeBlueprint(FindObject<UClass>(nullptr, TEXT("/Script/CoreUObject.Object")), TEXT("BP_FilterObject"));
	UEdGraph* EventGraph = Blueprint->UbergraphPages[0];
	UEdGraph* FunctionGraph = Blueprint->FunctionGraphs[0];

	UBlueprintEventNodeSpawner* BeginPlay = UBlueprintEventNodeSpawner::Create(Actor->FindFunctionByName(TEXT("ReceiveBeginPlay")));
	UBlueprintFunctionNodeSpawner* Delay = UBlueprintFunctionNodeSpawner::Create(FindFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("Delay")));
	UBlueprintFunctionNodeSpawner* Print = UBlueprintFunctionNodeSpawner::Create(FindFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString")));
	UBlueprintNodeSpawner* Branch = UBlueprintNodeSpawner::Create<UK2Node_IfThenElse>();
	ASSERT_TRUE(BeginPlay && Delay && Print && Branch);

	struct FCase
	{
		const char* Label;
		UBlueprint* Blueprint;
		UEdGraph* Graph;
		UBlueprintNodeSpawner* Spawner;
		bool bFiltered;
	};
	const FCase Cases[] = {
		{"event in event graph", Blueprint, EventGraph, BeginPlay, false},
		{"event in function", Blueprint, FunctionGraph, BeginPlay, true},
		{"Actor event in Object Blueprint", ObjectBlueprint, ObjectBlueprint->UbergraphPages[0], BeginPlay, true},
		{"latent call in event graph", Blueprint, EventGraph, Delay, false},
		{"latent call in function", Blueprint, FunctionGraph, Delay, true},
		{"plain call in function", Blueprint, FunctionGraph, Print, false},
		{"branch in function", Blueprint, FunctionGraph, Branch, false},
	};
	for (const FCase& Case : Cases)
	{
		FBlueprintActionFilter Filter;
		Filter.Context.Blueprints.Add(Case.Blueprint);
		Filter.Context.Graphs.Add(Case.Graph);
		FBlueprintActionInfo Info(nullptr, Case.Spawner);
		EXPECT_EQ(Filter.IsFiltered(Info), Case.bFiltered) << Case.Label;
	}

	// The body of a pure function runs without exec pins: only pure nodes fit.
	UEdGraph* PureFunction = NewObject<UEdGraph>(Blueprint, TEXT("PureFunction"));
	PureFunction->Schema = UEdGraphSchema_K2::StaticClass();
	Blueprint->FunctionGraphs.Add(PureFunction);
	UK2Node_FunctionEntry* Entry = NewObject<UK2Node_FunctionEntry>(PureFunction);
	Entry->AddExtraFlags(FUNC_BlueprintPure);
	PureFunction->AddNode(Entry, false, false);
	UBlueprintFunctionNodeSpawner* Location = UBlueprintFunctionNodeSpawner::Create(Actor->FindFunctionByName(TEXT("K2_GetActorLocation")));
	const FCase PureCases[] = {
		{"plain call in pure function", Blueprint, PureFunction, Print, true},
		{"branch in pure function", Blueprint, PureFunction, Branch, true},
		{"pure call in pure function", Blueprint, PureFunction, Location, false},
	};
	for (const FCase& Case : PureCases)
	{
		FBlueprintActionFilter Filter;
		Filter.Context.Blueprints.Add(Case.Blueprint);
		Filter.Context.Graphs.Add(Case.Graph);
		FBlueprintActionInfo Info(nullptr, Case.Spawner);
		EXPECT_EQ(Filter.IsFiltered(Info), Case.bFiltered) << Case.Label;
	}

	// Sections can narrow to node types and add their own tests.
	FBlueprintActionFilter OnlyBranches;
	OnlyBranches.Context.Blueprints.Add(Blueprint);
	OnlyBranches.Context.Graphs.Add(EventGraph);
	OnlyBranches.PermittedNodeTypes.Add(UK2Node_IfThenElse::StaticClass());
	FBlueprintActionInfo PrintInfo(nullptr, Print);
	FBlueprintActionInfo BranchInfo(nullptr, Branch);
	EXPECT_TRUE(OnlyBranches.IsFiltered(PrintInfo));
	EXPECT_FALSE(OnlyBranches.IsFiltered(BranchInfo));
	OnlyBranches.AddRejectionTest(FBlueprintActionFilter::FRejectionTestDelegate::CreateLambda([](const FBlueprintActionFilter&, FBlueprintActionInfo& Info)
	{
		return Info.GetNodeClass() == UK2Node_IfThenElse::StaticClass();
	}));
	EXPECT_TRUE(OnlyBranches.IsFiltered(BranchInfo));
}

TEST_F(FActionMenuSpawnerTest, NewNodeActionCopiesItsTemplate)
{
	UBlueprint* Blueprint = MakeBlueprint(Actor, TEXT("BP_Template"));
	UEdGraph* Graph = Blueprint->UbergraphPages[0];
	FEdGraphSchemaAction_K2NewNode Action(FText(), FText::FromString(TEXT("Branch")), FText(), 0);
	EXPECT_EQ(Action.PerformAction(Graph, nullptr, FVector2f()), nullptr);

	Action.NodeTemplate = NewObject<UK2Node_IfThenElse>(GetTransientPackage());
	Action.NodeTemplate->NodeComment = TEXT("kept");
	UEdGraphNode* First = Action.PerformAction(Graph, nullptr, FVector2f(10.0f, 20.0f));
	UEdGraphNode* Second = Action.PerformAction(Graph, nullptr, FVector2f(10.0f, 220.0f));
	ASSERT_NE(First, nullptr);
	ASSERT_NE(Second, nullptr);
	EXPECT_NE(First, Second);
	EXPECT_NE(First->NodeGuid, Second->NodeGuid);
	EXPECT_EQ(First->GetOuter(), Graph);
	EXPECT_EQ(::U8(First->NodeComment), "kept");
	EXPECT_EQ(First->NodePosY, 20);
	EXPECT_NE(First->FindPin(FName(TEXT("Condition"))), nullptr);
	EXPECT_EQ(Action.NodeTemplate->Pins.Num(), 0);
	EXPECT_EQ(U8(FText::FromName(Action.GetTypeId())), "FEdGraphSchemaAction_K2NewNode");
}
