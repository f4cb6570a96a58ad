// The checks a node placed by the deterministic or fuzzy route goes through: each refusal removes the node and says
// why; each completion (position, names, signature pins, delegate binding, counters) leaves it finished.

#include "PopulateSpawnTestSupport.h"

#include "Blueprint/UserWidget.h"
#include "Blueprint/WidgetTree.h"
#include "Components/PanelWidget.h"
#include "K2Node_CallFunction.h"
#include "K2Node_CreateDelegate.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_DynamicCast.h"
#include "K2Node_Event.h"
#include "K2Node_FunctionEntry.h"
#include "K2Node_VariableGet.h"
#include "K2Node_VariableSet.h"
#include "Populate/SpawnValidation.h"
#include "WidgetBlueprint.h"

#include <functional>

using namespace PopulateSpawnTests;

namespace
{
	class PopulateSpawnValidation : public FSpawnFixture
	{
	protected:
		UEdGraphNode* Validate(UEdGraphNode* Node, const FString& Json, const FVector2D& Position = FVector2D(0.0, 0.0))
		{
			const FNodeModificationRecord Record = Request(Json);
			return FSpawnValidation::ValidateSpawnedNode(Node, Record, Graph, Blueprint, Position, TArray<FCamMatch>(), Result);
		}

		UK2Node_CallFunction* PlaceCall(const TCHAR* ClassPath, const TCHAR* FunctionName)
		{
			const UFunction* Function = FindFunction(ClassPath, FunctionName);
			EXPECT_NE(Function, nullptr) << U8(FunctionName);
			return Place<UK2Node_CallFunction>(Graph, [Function](UK2Node_CallFunction& Node) { Node.SetFromFunction(Function); });
		}
	};

	TEST_F(PopulateSpawnValidation, NoPairOfClassesIsRefusedForItsClassAlone)
	{
		const std::vector<std::pair<const TCHAR*, const TCHAR*>> Pairs = {
			{TEXT("K2Node_CallFunction"), TEXT("K2Node_CallFunction")},
			{TEXT("k2node_callfunction"), TEXT("K2Node_CallFunction")},
			{TEXT("K2Node_CallFunction"), TEXT("K2Node_PromotableOperator")},
			{TEXT("K2Node_CallFunction"), TEXT("K2Node_CommutativeAssociativeBinaryOperator")},
			{TEXT("K2Node_IfThenElse"), TEXT("K2Node_CallFunction")},
			{TEXT("Branch"), TEXT("K2Node_MacroInstance")},
			{TEXT(""), TEXT("K2Node_Self")},
		};
		for (const auto& [Requested, Created] : Pairs)
		{
			EXPECT_TRUE(FSpawnValidation::IsEquivalentNodeClass(Requested, Created)) << U8(Requested) << " -> " << U8(Created);
		}

		// So a node of another class than requested is delivered, as long as the later checks pass.
		UK2Node_CallFunction* Print = PlaceCall(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"));
		EXPECT_EQ(Validate(Print, TEXT(R"({"class_name":"K2Node_IfThenElse","menu_title":"Print String"})")), Print);
		EXPECT_TRUE(Graph->Nodes.Contains(Print));
		EXPECT_EQ(Warnings(), std::vector<std::string>{});
	}

	struct FRefusalCase
	{
		const char* Name;
		std::function<UEdGraphNode*()> Make;
		const TCHAR* Json;
		std::string Expected;
	};

	TEST_F(PopulateSpawnValidation, AWrongMatchIsRemovedAndTheReasonReported)
	{
		const std::vector<FRefusalCase> Cases = {
			{"function named in another case",
				[this]() { return PlaceCall(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString")); },
				TEXT(R"({"menu_title":"Print","node_metadata":{"target_function":"printstring"}})"),
				"[Failure] Created function node 'Print' but function 'printstring' was requested (spawned 'PrintString'). Suggestions are provided (not mandatory); consider deterministic spawning if possible or refining the fuzzy request."},
			{"another function by the FunctionName key",
				[this]() { return PlaceCall(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString")); },
				TEXT(R"({"menu_title":"Print Text","target_function":"PrintString","node_metadata":{"FunctionName":"PrintText"}})"),
				"[Failure] Created function node 'Print Text' but function 'PrintText' was requested (spawned 'PrintString'). Suggestions are provided (not mandatory); consider deterministic spawning if possible or refining the fuzzy request."},
			{"a function its class does not have",
				[this]()
				{
					UClass* Actor = ActorClass;
					return Place<UK2Node_CallFunction>(Graph, [Actor](UK2Node_CallFunction& Node) { Node.FunctionReference.SetExternalMember(TEXT("Teleport2"), Actor); });
				},
				TEXT(R"({"menu_title":"Teleport"})"),
				"[Failure] Function node validation failed: Function 'Teleport2' does not exist in class 'Actor' (fuzzy match may have selected wrong node)"},
			{"an event the class cannot receive",
				[this]()
				{
					UClass* Actor = ActorClass;
					return Place<UK2Node_Event>(Graph, [Actor](UK2Node_Event& Node)
					{
						Node.EventReference.SetExternalMember(TEXT("ReceiveFoo"), Actor);
						Node.bOverrideFunction = true;
					});
				},
				TEXT(R"({"menu_title":"Event Foo"})"),
				"[Failure] Event node validation failed: Event 'ReceiveFoo' does not exist in Blueprint class (fuzzy match may have selected wrong node)"},
			{"a custom event without a name",
				[this]() { return Place<UK2Node_CustomEvent>(Graph); },
				TEXT(R"({"menu_title":"Add Custom Event"})"),
				"[Failure] Custom event node validation failed: Custom event has no name"},
			{"a cast to nothing",
				[this]() { return Place<UK2Node_DynamicCast>(Graph); },
				TEXT(R"({"menu_title":"Cast To Nothing","target_class":"Pawn"})"),
				"[Failure] Cast node validation failed: Target class does not exist (fuzzy match may have selected wrong node)"},
			{"a read of a variable the Blueprint lacks",
				[this]()
				{
					return Place<UK2Node_VariableGet>(Graph, [](UK2Node_VariableGet& Node) { Node.VariableReference.SetSelfMember(TEXT("NonExistentVar")); });
				},
				TEXT(R"({"menu_title":"Get NonExistentVar"})"),
				"[Failure] Variable 'NonExistentVar' does not exist in blueprint. Create the variable first and then try again.\n\nAvailable variables: Health, bIsAlive"},
			{"a write of a variable the Blueprint lacks",
				[this]()
				{
					return Place<UK2Node_VariableSet>(Graph, [](UK2Node_VariableSet& Node) { Node.VariableReference.SetSelfMember(TEXT("Mana")); });
				},
				TEXT(R"({"menu_title":"Set Mana"})"),
				"[Failure] Variable 'Mana' does not exist in blueprint. Create the variable first and then try again.\n\nAvailable variables: Health, bIsAlive"},
		};
		for (const FRefusalCase& Case : Cases)
		{
			SCOPED_TRACE(Case.Name);
			Result = Calvorn::FToolResult();
			const int32 NodesBefore = Graph->Nodes.Num();
			UEdGraphNode* Node = Case.Make();
			ASSERT_NE(Node, nullptr);
			ASSERT_EQ(Graph->Nodes.Num(), NodesBefore + 1);
			EXPECT_EQ(Validate(Node, Case.Json), nullptr);
			EXPECT_EQ(Graph->Nodes.Num(), NodesBefore);
			EXPECT_FALSE(Graph->Nodes.Contains(Node));
			EXPECT_EQ(Warnings(), std::vector<std::string>{Case.Expected});
			EXPECT_EQ(ValidationFailures(), std::vector<std::string>{Case.Expected});
			EXPECT_EQ(Errors(), std::vector<std::string>{});
		}
	}

	TEST_F(PopulateSpawnValidation, ANodeThatPassesIsPlacedAndCompleted)
	{
		UK2Node_CallFunction* Print = PlaceCall(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"));
		// Coordinates are truncated toward zero, as an integer cast does.
		EXPECT_EQ(Validate(Print, TEXT(R"({"class_name":"K2Node_CallFunction","menu_title":"Print String","node_metadata":{"target_function":"PrintString"}})"), FVector2D(123.9, -45.6)), Print);
		EXPECT_EQ(Print->NodePosX, 123);
		EXPECT_EQ(Print->NodePosY, -45);

		UK2Node_CustomEvent* Custom = Place<UK2Node_CustomEvent>(Graph, [](UK2Node_CustomEvent& Node) { Node.CustomFunctionName = TEXT("Ping"); });
		EXPECT_EQ(Validate(Custom, TEXT(R"({"class_name":"K2Node_CustomEvent","node_metadata":{"event_name":"Pong"}})")), Custom);
		EXPECT_EQ(Custom->CustomFunctionName, FName(TEXT("Pong")));
		EXPECT_TRUE(Custom->bIsEditable);

		UK2Node_VariableGet* Health = Place<UK2Node_VariableGet>(Graph, [](UK2Node_VariableGet& Node) { Node.VariableReference.SetSelfMember(TEXT("Health")); });
		EXPECT_EQ(Validate(Health, TEXT(R"({"class_name":"K2Node_VariableGet"})")), Health);

		// A variable the native parent declares is a variable of the Blueprint too.
		UK2Node_VariableGet* Tags = Place<UK2Node_VariableGet>(Graph, [](UK2Node_VariableGet& Node) { Node.VariableReference.SetSelfMember(TEXT("Tags")); });
		EXPECT_EQ(Validate(Tags, TEXT(R"({"class_name":"K2Node_VariableGet"})")), Tags);

		UK2Node_DynamicCast* CastNode = Place<UK2Node_DynamicCast>(Graph, [](UK2Node_DynamicCast& Node) { Node.TargetType = FindClass(TEXT("/Script/Engine.Pawn")); });
		EXPECT_EQ(Validate(CastNode, TEXT(R"({"class_name":"K2Node_DynamicCast","target_class":"Character"})")), CastNode);

		EXPECT_EQ(Warnings(), std::vector<std::string>{});
		EXPECT_TRUE(Graph->Nodes.Contains(Print) && Graph->Nodes.Contains(Custom) && Graph->Nodes.Contains(Health) && Graph->Nodes.Contains(Tags) && Graph->Nodes.Contains(CastNode));
	}

	TEST_F(PopulateSpawnValidation, WithoutANodeTheClassAndBindingChecksSaySo)
	{
		EXPECT_EQ(Validate(nullptr, TEXT(R"({"class_name":"K2Node_CallFunction","node_metadata":{"target_function":"PrintString"}})")), nullptr);
		EXPECT_EQ(Warnings(), (std::vector<std::string>{"[Failure] Cannot validate node class because node creation failed", "[Failure] Cannot validate function binding because node creation failed"}));

		// A comment is not held to any class.
		Result = Calvorn::FToolResult();
		EXPECT_EQ(Validate(nullptr, TEXT(R"({"class_name":"EdGraphNode_Comment"})")), nullptr);
		EXPECT_EQ(Warnings(), std::vector<std::string>{});
	}

	TEST_F(PopulateSpawnValidation, AFunctionEntryGetsTheRequestedParameters)
	{
		UEdGraph* Function = FBlueprintEditorUtils::CreateNewGraph(Blueprint, TEXT("Heal"), UEdGraph::StaticClass(), UEdGraphSchema_K2::StaticClass());
		FBlueprintEditorUtils::AddFunctionGraph<UClass>(Blueprint, Function, true, nullptr);
		UK2Node_FunctionEntry* Entry = nullptr;
		for (UEdGraphNode* Node : Function->Nodes)
		{
			Entry = Entry ? Entry : Cast<UK2Node_FunctionEntry>(Node);
		}
		ASSERT_NE(Entry, nullptr);
		const FNodeModificationRecord Record = Request(TEXT(R"({"class_name":"K2Node_FunctionEntry","pins":[
			{"name":"Amount","type":{"category":"int"}},
			{"name":"Targets","type":{"category":"object","sub_category_object":"/Script/Engine.Actor","container":"Array"}},
			{"action":"modify","name":"Ignored","type":{"category":"bool"}}]})"));
		EXPECT_EQ(FSpawnValidation::ValidateSpawnedNode(Entry, Record, Function, Blueprint, FVector2D(0.0, 0.0), TArray<FCamMatch>(), Result), Entry) << Describe(Result);
		const UEdGraphPin* Amount = Entry->FindPin(TEXT("Amount"));
		ASSERT_NE(Amount, nullptr);
		EXPECT_EQ(Amount->Direction, EGPD_Output);
		EXPECT_EQ(Amount->PinType.PinCategory, UEdGraphSchema_K2::PC_Int);
		const UEdGraphPin* Targets = Entry->FindPin(TEXT("Targets"));
		ASSERT_NE(Targets, nullptr);
		EXPECT_EQ(Targets->PinType.PinSubCategoryObject.Get(), ActorClass);
		EXPECT_EQ(Targets->PinType.ContainerType, EPinContainerType::Array);
		EXPECT_EQ(Entry->FindPin(TEXT("Ignored")), nullptr);
		EXPECT_EQ(Warnings(), std::vector<std::string>{});
	}

	TEST_F(PopulateSpawnValidation, MarkedEnumComparisonsAreCounted)
	{
		for (int32 Index = 0; Index < 2; ++Index)
		{
			UK2Node_CallFunction* Equal = PlaceCall(TEXT("/Script/Engine.KismetMathLibrary"), TEXT("EqualEqual_ByteByte"));
			EXPECT_EQ(Validate(Equal, TEXT(R"({"node_metadata":{"test_category":"Enum_Comparison"}})")), Equal);
		}
		UK2Node_CallFunction* Other = PlaceCall(TEXT("/Script/Engine.KismetMathLibrary"), TEXT("EqualEqual_ByteByte"));
		EXPECT_EQ(Validate(Other, TEXT(R"({"node_metadata":{"test_category":"enum"}})")), Other);
		double Attempts = -1.0;
		double Failures = -1.0;
		ASSERT_TRUE(Telemetry().IsValid());
		EXPECT_TRUE(Telemetry()->TryGetNumberField(TEXT("enum_comparison_attempts"), Attempts));
		EXPECT_TRUE(Telemetry()->TryGetNumberField(TEXT("enum_comparison_failures"), Failures));
		EXPECT_EQ(Attempts, 2.0);
		EXPECT_EQ(Failures, 0.0);
	}

	TEST_F(PopulateSpawnValidation, ADelegateIsBoundToACompatibleFunctionOrKeptUnbound)
	{
		Place<UK2Node_CustomEvent>(Graph, [](UK2Node_CustomEvent& Node) { Node.CustomFunctionName = TEXT("OnPing"); });
		FKismetEditorUtilities::CompileBlueprint(Blueprint);

		// Bound only where the delegate goes somewhere: a timer's event input, whose signature OnPing matches.
		UK2Node_CallFunction* Timer = PlaceCall(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("K2_SetTimerDelegate"));
		UEdGraphPin* TimerEvent = nullptr;
		for (UEdGraphPin* Pin : Timer->Pins)
		{
			TimerEvent = (!TimerEvent && Pin->PinType.PinCategory == UEdGraphSchema_K2::PC_Delegate) ? Pin : TimerEvent;
		}
		ASSERT_NE(TimerEvent, nullptr);
		UK2Node_CreateDelegate* Bound = Place<UK2Node_CreateDelegate>(Graph);
		ASSERT_TRUE(GetDefault<UEdGraphSchema_K2>()->TryCreateConnection(Bound->GetDelegateOutPin(), TimerEvent));
		EXPECT_EQ(Validate(Bound, TEXT(R"({"node_guid":"dg1","node_metadata":{"binding_function":"onping"}})")), Bound);
		EXPECT_EQ(U8(Bound->GetFunctionName().ToString()), "OnPing");
		EXPECT_EQ(Str(Telemetry(), TEXT("delegate_binding_dg1")), "OnPing");
		EXPECT_EQ(Warnings(), std::vector<std::string>{});

		UK2Node_CreateDelegate* Unbound = Place<UK2Node_CreateDelegate>(Graph);
		EXPECT_EQ(Validate(Unbound, TEXT(R"({"node_guid":"dg2","node_metadata":{"binding_function":"NoSuchHandler"}})")), Unbound);
		EXPECT_TRUE(Graph->Nodes.Contains(Unbound));
		EXPECT_TRUE(Unbound->GetFunctionName().IsNone());
		const UClass* Scope = Unbound->GetScopeClass(false);
		ASSERT_NE(Scope, nullptr);
		const std::string ScopeName = U8(Scope->GetName());
		EXPECT_EQ(ValidationFailures(), std::vector<std::string>{"Could not find delegate-compatible function 'NoSuchHandler' in scope class '" + ScopeName + "' for node 'dg2'."});
		ASSERT_EQ(Result.GetWarningMessages().Num(), 1);
		const std::string Warning = U8(Result.GetWarningMessages()[0]);
		EXPECT_EQ(Warning.rfind("Available delegate-compatible functions in '" + ScopeName + "': ", 0), 0u) << Warning;
		EXPECT_NE(Warning.find("OnPing"), std::string::npos) << Warning;
		const TArray<TSharedPtr<FJsonObject>> Failures = Objects(Telemetry(), TEXT("delegate_binding_failures"));
		ASSERT_EQ(Failures.Num(), 1);
		EXPECT_EQ(Keys(Failures[0]), (std::vector<std::string>{"node_id", "requested_function", "scope_class", "reason"}));
		EXPECT_EQ(Str(Failures[0], TEXT("node_id")), "dg2");
		EXPECT_EQ(Str(Failures[0], TEXT("requested_function")), "NoSuchHandler");
		EXPECT_EQ(Str(Failures[0], TEXT("scope_class")), ScopeName);
		EXPECT_EQ(Str(Failures[0], TEXT("reason")), "function_not_found_or_incompatible");
	}

	TEST_F(PopulateSpawnValidation, AMathNodeIsKeptOnlyWhenItsTitleParses)
	{
		UClass* MathClass = FindClass(TEXT("/Script/BlueprintGraph.K2Node_MathExpression"));
		if (!MathClass)
		{
			GTEST_SKIP() << "no math expression node in this build";
		}
		UEdGraphNode* Good = Graph->CreateNode(MathClass, false, false);
		Good->CreateNewGuid();
		Good->PostPlacedNewNode();
		Good->AllocateDefaultPins();
		EXPECT_EQ(Validate(Good, TEXT(R"({"class_name":"K2Node_MathExpression","menu_title":"a + b"})")), Good) << Describe(Result);
		EXPECT_NE(Good->FindPin(TEXT("a")), nullptr);

		UEdGraphNode* Bad = Graph->CreateNode(MathClass, false, false);
		Bad->CreateNewGuid();
		Bad->PostPlacedNewNode();
		Bad->AllocateDefaultPins();
		const int32 NodesBefore = Graph->Nodes.Num();
		EXPECT_EQ(Validate(Bad, TEXT(R"({"class_name":"K2Node_MathExpression","menu_title":"1 +"})")), nullptr);
		EXPECT_EQ(Graph->Nodes.Num(), NodesBefore - 1);
		ASSERT_EQ(Result.GetWarningMessages().Num(), 1);
		const FString& Text = Result.GetWarningMessages()[0];
		EXPECT_TRUE(Text.StartsWith(TEXT("[Failure] Invalid math expression '1 +': "), ESearchCase::CaseSensitive)) << U8(Text);
		EXPECT_GT(Text.Len(), FString(TEXT("[Failure] Invalid math expression '1 +': ")).Len());
	}

	// ---- Whether a variable exists ---------------------------------------------------------------------------------

	TEST_F(PopulateSpawnValidation, AMissingVariableIsReportedWithWhatExists)
	{
		FString Error;
		EXPECT_FALSE(FSpawnValidation::ValidateVariableExists(nullptr, TEXT("Health"), Error));
		EXPECT_EQ(U8(Error), "Blueprint is null");
		EXPECT_TRUE(FSpawnValidation::ValidateVariableExists(Blueprint, TEXT("health"), Error));
		EXPECT_TRUE(FSpawnValidation::ValidateVariableExists(Blueprint, TEXT("RootComponent"), Error));

		UBlueprint* Bare = MakeBlueprint(ActorClass, TEXT("BP_Bare"));
		EXPECT_FALSE(FSpawnValidation::ValidateVariableExists(Bare, TEXT("Speed"), Error));
		EXPECT_EQ(U8(Error), "Variable 'Speed' does not exist in blueprint. Create the variable first and then try again.\n\nNo variables exist in this blueprint yet.");

		// Ten names are listed; from eleven on only their number is given.
		std::string Listed;
		for (int32 Index = 0; Index < 11; ++Index)
		{
			const FString Name = FString::Printf(TEXT("Var%d"), Index);
			if (Index == 10)
			{
				EXPECT_FALSE(FSpawnValidation::ValidateVariableExists(Bare, TEXT("Speed"), Error));
				EXPECT_EQ(U8(Error), "Variable 'Speed' does not exist in blueprint. Create the variable first and then try again.\n\nAvailable variables: " + Listed);
			}
			ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Bare, FName(*Name), MakeType(UEdGraphSchema_K2::PC_Int)));
			Listed += (Listed.empty() ? "" : ", ") + U8(Name);
		}
		EXPECT_FALSE(FSpawnValidation::ValidateVariableExists(Bare, TEXT("Speed"), Error));
		EXPECT_EQ(U8(Error), "Variable 'Speed' does not exist in blueprint. Create the variable first and then try again.\n\n11 variables exist in this blueprint. Use read_blueprint_variables to list them.");
	}

	TEST_F(PopulateSpawnValidation, AWidgetMarkedAsVariableIsAVariable)
	{
		UWidgetBlueprint* Menu = Cast<UWidgetBlueprint>(MakeBlueprint(UUserWidget::StaticClass(), TEXT("WBP_Menu")));
		ASSERT_NE(Menu, nullptr);
		ASSERT_NE(Menu->WidgetTree, nullptr);
		UPanelWidget* Root = Menu->WidgetTree->ConstructWidget<UPanelWidget>(FindClass(TEXT("/Script/UMG.Button")), TEXT("StartButton"));
		UWidget* Label = Menu->WidgetTree->ConstructWidget(FindClass(TEXT("/Script/UMG.TextBlock")), TEXT("StartLabel"));
		Menu->WidgetTree->RootWidget = Root;
		Root->AddChild(Label);
		Label->bIsVariable = false;

		FString Error;
		EXPECT_TRUE(FSpawnValidation::ValidateVariableExists(Menu, TEXT("StartButton"), Error));
		EXPECT_FALSE(FSpawnValidation::ValidateVariableExists(Menu, TEXT("StartLabel"), Error));
		EXPECT_EQ(U8(Error), "Variable 'StartLabel' does not exist in blueprint. Create the variable first and then try again.\n\nAvailable variables: StartButton");
	}
}
