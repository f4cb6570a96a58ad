// Pins as clients name them, their values, and wires made through the schema, on real nodes of a real Blueprint.

#include "ReadTestSupport.h"

#include "K2Node_CallFunction.h"
#include "K2Node_CustomEvent.h"
#include "K2Node_DynamicCast.h"
#include "K2Node_IfThenElse.h"
#include "Populate/PinConnectionUtils.h"
#include "Populate/PopulateTelemetry.h"

using namespace ReadTests;

namespace
{
	/**
	 * An Actor Blueprint's graph holding: a branch; Print String; Get Actor Location; Join String Array (pure);
	 * a custom event "Signal" with the outputs WidgetContextObject, true and Target; an impure cast to Pawn.
	 */
	class PopulateRecordsPins : public FReadFixture
	{
	protected:
		PopulateRecordsPins()
		{
			UClass* Actor = FindClass(TEXT("/Script/Engine.Actor"));
			Blueprint = MakeBlueprint(Actor, TEXT("BP_Pins"));
			Graph = MakeGraph(Blueprint, TEXT("Pins"));
			Branch = Place<UK2Node_IfThenElse>(Graph);
			Print = PlaceCall(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("PrintString"));
			Location = PlaceCall(TEXT("/Script/Engine.Actor"), TEXT("K2_GetActorLocation"));
			Join = PlaceCall(TEXT("/Script/Engine.KismetStringLibrary"), TEXT("JoinStringArray"));
			SecondJoin = PlaceCall(TEXT("/Script/Engine.KismetStringLibrary"), TEXT("JoinStringArray"));
			Signal = Place<UK2Node_CustomEvent>(Graph, [](UK2Node_CustomEvent& Node) { Node.CustomFunctionName = TEXT("Signal"); });
			FEdGraphPinType ObjectType;
			ObjectType.PinCategory = UEdGraphSchema_K2::PC_Object;
			ObjectType.PinSubCategoryObject = FindClass(TEXT("/Script/CoreUObject.Object"));
			FEdGraphPinType BoolType;
			BoolType.PinCategory = UEdGraphSchema_K2::PC_Boolean;
			Signal->CreateUserDefinedPin(TEXT("WidgetContextObject"), ObjectType, EGPD_Output, false);
			Signal->CreateUserDefinedPin(TEXT("true"), BoolType, EGPD_Output, false);
			Signal->CreateUserDefinedPin(TEXT("Target"), BoolType, EGPD_Output, false);
			UClass* Pawn = FindClass(TEXT("/Script/Engine.Pawn"));
			Cast = Place<UK2Node_DynamicCast>(Graph, [Pawn](UK2Node_DynamicCast& Node) { Node.TargetType = Pawn; });
		}

		UK2Node_CallFunction* PlaceCall(const TCHAR* ClassPath, const TCHAR* Name)
		{
			const UFunction* Function = FindFunction(ClassPath, Name);
			EXPECT_NE(Function, nullptr) << U8(Name);
			return Place<UK2Node_CallFunction>(Graph, [Function](UK2Node_CallFunction& Node) { Node.SetFromFunction(Function); });
		}

		static double Fallbacks(const Calvorn::FToolResult& Result)
		{
			const TSharedPtr<FJsonObject> Telemetry = Obj(Result.GetDatas(), TEXT("telemetry"));
			return Telemetry.IsValid() ? Telemetry->GetNumberField(TEXT("pin_direction_fallbacks")) : 0.0;
		}

		static bool Linked(const UEdGraphNode* From, const TCHAR* FromPin, const UEdGraphNode* To, const TCHAR* ToPin)
		{
			const UEdGraphPin* A = From->FindPin(FromPin);
			const UEdGraphPin* B = To->FindPin(ToPin);
			return A && B && A->LinkedTo.Contains(B) && B->LinkedTo.Contains(A);
		}

		UBlueprint* Blueprint = nullptr;
		UEdGraph* Graph = nullptr;
		UK2Node_IfThenElse* Branch = nullptr;
		UK2Node_CallFunction* Print = nullptr;
		UK2Node_CallFunction* Location = nullptr;
		UK2Node_CallFunction* Join = nullptr;
		UK2Node_CallFunction* SecondJoin = nullptr;
		UK2Node_CustomEvent* Signal = nullptr;
		UK2Node_DynamicCast* Cast = nullptr;
	};
}

TEST_F(PopulateRecordsPins, FindPinFuzzyTriesAliasesThenNamesThenTheOtherDirection)
{
	struct FCase
	{
		UEdGraphNode* Node;
		const TCHAR* Name;
		EEdGraphPinDirection Direction;
		const char* Expected; // null: no pin
		EEdGraphPinDirection ExpectedDirection;
		int32 Fallbacks;
	};
	const FCase Cases[] = {
		{Branch, TEXT("true"), EGPD_Output, "then", EGPD_Output, 0},
		{Branch, TEXT("FALSE"), EGPD_Output, "else", EGPD_Output, 0},
		{Branch, TEXT("execute"), EGPD_Input, "execute", EGPD_Input, 0},
		{Branch, TEXT("condition"), EGPD_Input, "Condition", EGPD_Input, 0},
		// An output named for an input end is still found, and counted.
		{Branch, TEXT("then"), EGPD_Input, "then", EGPD_Output, 1},
		// No self pin, no pin of that name in either direction.
		{Branch, TEXT("Target"), EGPD_Input, nullptr, EGPD_Input, 0},
		{Location, TEXT("Return Value"), EGPD_Output, "ReturnValue", EGPD_Output, 0},
		{Location, TEXT("return VALUE"), EGPD_Output, "ReturnValue", EGPD_Output, 0},
		{Location, TEXT("returnvalue"), EGPD_Output, "ReturnValue", EGPD_Output, 0},
		{Location, TEXT("Target"), EGPD_Input, "self", EGPD_Input, 0},
		{Print, TEXT("World Context Object"), EGPD_Input, "WorldContextObject", EGPD_Input, 0},
		{Print, TEXT("Completed"), EGPD_Output, nullptr, EGPD_Output, 0},
		// The alias list goes on to the next spelling when the first is not on the node.
		{Signal, TEXT("world context object"), EGPD_Output, "WidgetContextObject", EGPD_Output, 0},
		// An alias beats a pin that carries the client's word itself.
		{Signal, TEXT("true"), EGPD_Output, "then", EGPD_Output, 0},
		// Without a self pin, "Target" falls through to a pin of that name.
		{Signal, TEXT("Target"), EGPD_Output, "Target", EGPD_Output, 0},
		{Signal, TEXT("target"), EGPD_Input, "Target", EGPD_Output, 1},
		{Branch, TEXT(""), EGPD_Input, nullptr, EGPD_Input, 0},
		{nullptr, TEXT("then"), EGPD_Output, nullptr, EGPD_Output, 0},
	};
	for (const FCase& Case : Cases)
	{
		Calvorn::FToolResult Result;
		const UEdGraphPin* Pin = FPinConnectionUtils::FindPinFuzzy(Case.Node, Case.Name, Case.Direction, &Result);
		const std::string Label = U8(Case.Name) + (Case.Node ? " on " + U8(Case.Node->GetNodeTitle(ENodeTitleType::ListView).ToString()) : " on no node");
		if (!Case.Expected)
		{
			EXPECT_EQ(Pin, nullptr) << Label;
		}
		else
		{
			ASSERT_NE(Pin, nullptr) << Label;
			EXPECT_EQ(U8(Pin->PinName.ToString()), Case.Expected) << Label;
			EXPECT_EQ(Pin->Direction, Case.ExpectedDirection) << Label;
			EXPECT_EQ(Pin->GetOwningNode(), Case.Node) << Label;
		}
		EXPECT_EQ(Fallbacks(Result), Case.Fallbacks) << Label;
		EXPECT_TRUE(Result.GetWarningMessages().IsEmpty()) << Label << ": the lookup reports nothing itself";
	}

	// Without a result the fallback still finds the pin.
	EXPECT_EQ(FPinConnectionUtils::FindPinFuzzy(Branch, TEXT("else"), EGPD_Input, nullptr), Branch->FindPin(TEXT("else")));
}

TEST_F(PopulateRecordsPins, ParsePinDirectionReadsFourWords)
{
	EXPECT_EQ(FPinConnectionUtils::ParsePinDirection(TEXT("Output")), EGPD_Output);
	EXPECT_EQ(FPinConnectionUtils::ParsePinDirection(TEXT("OUT")), EGPD_Output);
	EXPECT_EQ(FPinConnectionUtils::ParsePinDirection(TEXT("in")), EGPD_Input);
	EXPECT_EQ(FPinConnectionUtils::ParsePinDirection(TEXT("input")), EGPD_Input);
	EXPECT_EQ(FPinConnectionUtils::ParsePinDirection(TEXT("")), EGPD_Input);
	EXPECT_EQ(FPinConnectionUtils::ParsePinDirection(TEXT("outputs")), EGPD_Input);
}

TEST_F(PopulateRecordsPins, SetPinValueGoesThroughTheSchema)
{
	struct FCase
	{
		UEdGraphNode* Node;
		const TCHAR* Pin;
		const TCHAR* Value;
		bool bAccepted;
		int32 Warnings;
	};
	const FCase Cases[] = {
		{Print, TEXT("InString"), TEXT("Hello there"), true, 0},
		{Print, TEXT("Duration"), TEXT("2.5"), true, 0},
		{Print, TEXT("bPrintToScreen"), TEXT("false"), true, 0},
		{Print, TEXT("Duration"), TEXT("soon"), false, 1},
		// An array input takes no literal: the refusal comes with the hint about wiring a literal node.
		{Join, TEXT("SourceArray"), TEXT("a,b"), false, 2},
	};
	for (const FCase& Case : Cases)
	{
		UEdGraphPin* Pin = Case.Node->FindPin(Case.Pin);
		ASSERT_NE(Pin, nullptr) << U8(Case.Pin);
		const FString Before = Pin->DefaultValue;
		Calvorn::FToolResult Result;
		EXPECT_EQ(FPinConnectionUtils::SetPinValue(Pin, Case.Value, Result), Case.bAccepted) << U8(Case.Pin) << " = " << U8(Case.Value);
		EXPECT_EQ(Result.GetWarningMessages().Num(), Case.Warnings) << Describe(Result);
		EXPECT_TRUE(Result.GetErrorMessages().IsEmpty()) << Describe(Result);
		if (Case.bAccepted)
		{
			EXPECT_NE(Pin->DefaultValue, Before) << U8(Case.Pin);
		}
		else
		{
			EXPECT_EQ(U8(Pin->DefaultValue), U8(Before)) << "a refused value leaves the former default";
		}
	}
	EXPECT_EQ(U8(Print->FindPin(TEXT("InString"))->DefaultValue), "Hello there");

	Calvorn::FToolResult Result;
	FPinConnectionUtils::SetPinValue(Join->FindPin(TEXT("SourceArray")), TEXT("a"), Result);
	ASSERT_EQ(Result.GetWarningMessages().Num(), 2);
	EXPECT_TRUE(Result.GetWarningMessages()[0].Contains(TEXT("must have an input wired into"))) << Describe(Result);
	EXPECT_EQ(U8(Result.GetWarningMessages()[1]), "You can use Make literal Name node to set the value and connect it to this pin");
}

TEST_F(PopulateRecordsPins, SetPinValueRefusesLinkedPinsAndIgnoresEmptyValues)
{
	Link(Join, TEXT("ReturnValue"), Print, TEXT("InString"));
	UEdGraphPin* InString = Print->FindPin(TEXT("InString"));
	const FString Before = InString->DefaultValue;
	Calvorn::FToolResult Result;
	EXPECT_FALSE(FPinConnectionUtils::SetPinValue(InString, TEXT("Manual"), Result));
	EXPECT_EQ(U8s(Result.GetWarningMessages()), (std::vector<std::string>{
		"Failed to set value of pin 'InString' to 'Manual'. Pin is connected to another pin. Break the connection if you want to set a manual value."}));
	EXPECT_EQ(U8(InString->DefaultValue), U8(Before));

	Calvorn::FToolResult Quiet;
	UEdGraphPin* Duration = Print->FindPin(TEXT("Duration"));
	const FString DurationBefore = Duration->DefaultValue;
	EXPECT_FALSE(FPinConnectionUtils::SetPinValue(Duration, FString(), Quiet));
	EXPECT_FALSE(FPinConnectionUtils::SetPinValue(nullptr, TEXT("1"), Quiet));
	EXPECT_TRUE(Quiet.GetWarningMessages().IsEmpty());
	EXPECT_EQ(U8(Duration->DefaultValue), U8(DurationBefore));
}

TEST_F(PopulateRecordsPins, ConnectPinsWiresWhatTheSchemaAllows)
{
	Calvorn::FToolResult Result;
	EXPECT_TRUE(FPinConnectionUtils::ConnectPins(Graph, Branch, TEXT("true"), Print, TEXT("execute"), Result));
	EXPECT_TRUE(FPinConnectionUtils::ConnectPins(Graph, Join, TEXT("Return Value"), Print, TEXT("InString"), Result));
	EXPECT_TRUE(Linked(Branch, TEXT("then"), Print, TEXT("execute")));
	EXPECT_TRUE(Linked(Join, TEXT("ReturnValue"), Print, TEXT("InString")));

	// A wire that replaces the target's link (the schema's break answer) goes through without a word.
	EXPECT_TRUE(FPinConnectionUtils::ConnectPins(Graph, SecondJoin, TEXT("ReturnValue"), Print, TEXT("InString"), Result));
	EXPECT_TRUE(Linked(SecondJoin, TEXT("ReturnValue"), Print, TEXT("InString")));
	EXPECT_FALSE(Linked(Join, TEXT("ReturnValue"), Print, TEXT("InString")));
	EXPECT_TRUE(Result.GetWarningMessages().IsEmpty()) << Describe(Result);
	EXPECT_FALSE(FPopulateTelemetry::HasTelemetry(Result));
}

TEST_F(PopulateRecordsPins, ConnectPinsExplainsEachRefusal)
{
	const std::string BranchTitle = U8(Branch->GetNodeTitle(ENodeTitleType::FullTitle).ToString());
	const std::string PrintTitle = U8(Print->GetNodeTitle(ENodeTitleType::FullTitle).ToString());
	const std::string CastTitle = U8(Cast->GetNodeTitle(ENodeTitleType::ListView).ToString());

	// The cast's pins were made impure; marking it pure afterwards, as a node loaded before reconstruction can be,
	// leaves exec pins on a pure node.
	ASSERT_NE(Cast->FindPin(TEXT("then")), nullptr);
	Cast->PureState = UK2Node_DynamicCast::EPureState::Pure;
	ASSERT_TRUE(Cast->IsNodePure());

	struct FCase
	{
		UEdGraphNode* Source;
		const TCHAR* SourcePin;
		UEdGraphNode* Target;
		const TCHAR* TargetPin;
		std::string Warning; // exact, or the start when bPrefix
		bool bPrefix;
		bool bReachesSchema;
	};
	const FCase Cases[] = {
		{Branch, TEXT("nope"), Print, TEXT("execute"), "[Failure] Source pin 'nope' not found on node '" + BranchTitle + "'", false, false},
		{Branch, TEXT("then"), Print, TEXT("Nothing"), "[Failure] Target pin 'Nothing' not found on node '" + PrintTitle + "'", false, false},
		{Cast, TEXT("then"), Print, TEXT("execute"), "[Failure] Attempted to connect execution pin on pure node '" + CastTitle + "'. Pure nodes have no execution flow.", false, false},
		{Branch, TEXT("then"), Cast, TEXT("execute"), "[Failure] Attempted to connect execution pin to pure node '" + CastTitle + "'. Pure nodes have no execution flow.", false, false},
		{Branch, TEXT("then"), Print, TEXT("InString"), "[Failure] Schema forbids connection: ", true, true},
		{Location, TEXT("ReturnValue"), Print, TEXT("bPrintToScreen"), "[Failure] Schema forbids connection: ", true, true},
	};
	for (const FCase& Case : Cases)
	{
		Calvorn::FToolResult Result;
		EXPECT_FALSE(FPinConnectionUtils::ConnectPins(Graph, Case.Source, Case.SourcePin, Case.Target, Case.TargetPin, Result)) << Case.Warning;
		ASSERT_EQ(Result.GetWarningMessages().Num(), 1) << Describe(Result);
		const std::string Warning = U8(Result.GetWarningMessages()[0]);
		if (Case.bPrefix)
		{
			EXPECT_EQ(Warning.rfind(Case.Warning, 0), 0u) << Warning;
			EXPECT_GT(Warning.size(), Case.Warning.size()) << "the schema's reason follows";
		}
		else
		{
			EXPECT_EQ(Warning, Case.Warning);
		}
		EXPECT_TRUE(Result.GetErrorMessages().IsEmpty());

		// Only refusals by the schema count as connection failures.
		const TSharedPtr<FJsonObject> Telemetry = Obj(Result.GetDatas(), TEXT("telemetry"));
		const TArray<TSharedPtr<FJsonObject>> Failures = Objects(Telemetry, TEXT("connection_failures"));
		if (Case.bReachesSchema)
		{
			ASSERT_EQ(Failures.Num(), 1);
			EXPECT_EQ(Str(Failures[0], TEXT("source_node")), U8(Case.Source->GetNodeTitle(ENodeTitleType::FullTitle).ToString()));
			EXPECT_EQ(Str(Failures[0], TEXT("source_pin")), U8(Case.SourcePin));
			EXPECT_EQ(Str(Failures[0], TEXT("target_pin")), U8(Case.TargetPin));
			EXPECT_NE(Str(Failures[0], TEXT("reason")), "");
			EXPECT_EQ(Strings(Telemetry, TEXT("validation_failures")), (std::vector<std::string>{Warning}));
		}
		else
		{
			EXPECT_EQ(Failures.Num(), 0) << Warning;
		}
	}
	for (const UEdGraphPin* Pin : Print->Pins)
	{
		EXPECT_TRUE(Pin->LinkedTo.IsEmpty()) << "no refused wire was made: " << U8(Pin->PinName.ToString());
	}
}

TEST_F(PopulateRecordsPins, ConnectPinsNamesAnInputAsSourceThroughTheFallback)
{
	// "Condition" is an input; taken as the source it is found by the fallback, and the schema refuses input to input.
	Calvorn::FToolResult Result;
	EXPECT_FALSE(FPinConnectionUtils::ConnectPins(Graph, Branch, TEXT("Condition"), Print, TEXT("bPrintToScreen"), Result));
	EXPECT_EQ(Fallbacks(Result), 1.0);
	ASSERT_EQ(Result.GetWarningMessages().Num(), 1);
	EXPECT_TRUE(Result.GetWarningMessages()[0].StartsWith(TEXT("[Failure] Schema forbids connection: "))) << Describe(Result);

	Calvorn::FToolResult NoGraph;
	EXPECT_FALSE(FPinConnectionUtils::ConnectPins(nullptr, Branch, TEXT("then"), Print, TEXT("execute"), NoGraph));
	EXPECT_EQ(U8s(NoGraph.GetErrorMessages()), (std::vector<std::string>{"Graph is null"}));
	EXPECT_TRUE(Print->FindPin(TEXT("execute"))->LinkedTo.IsEmpty());
}

TEST(PopulateRecordsPinAliases, TableHoldsTheClientWordsInLowerCase)
{
	const TMap<FString, TArray<FString>>& Aliases = FPinConnectionUtils::GetPinAliases();
	EXPECT_EQ(&Aliases, &FPinConnectionUtils::GetPinAliases()) << "built once";
	EXPECT_EQ(Aliases.Num(), 7);
	for (const TPair<FString, TArray<FString>>& Entry : Aliases)
	{
		EXPECT_EQ(Entry.Key, Entry.Key.ToLower());
		EXPECT_FALSE(Entry.Value.IsEmpty());
	}
	const TArray<FString>* World = Aliases.Find(TEXT("world context object"));
	ASSERT_NE(World, nullptr);
	EXPECT_EQ(U8s(*World), (std::vector<std::string>{"WorldContextObject", "WidgetContextObject", "Context", "WorldContext"}));
}
