#include "NodesBTestUtils.h"

#include "K2Node_CallFunction.h"
#include "K2Node_CastByteToEnum.h"
#include "K2Node_DynamicCast.h"
#include "K2Node_Event.h"
#include "K2Node_FunctionEntry.h"
#include "K2Node_FunctionResult.h"
#include "K2Node_ExecutionSequence.h"
#include "K2Node_IfThenElse.h"
#include "K2Node_MacroInstance.h"
#include "K2Node_MakeArray.h"
#include "K2Node_PromotableOperator.h"
#include "K2Node_Select.h"
#include "K2Node_SwitchEnum.h"
#include "K2Node_SwitchInteger.h"
#include "K2Node_SwitchString.h"
#include "K2Node_MakeStruct.h"

using namespace NodesBTest;

namespace
{
	class NodesBSchema : public FNodesBFixture
	{
	protected:
		UK2Node_CallFunction* PlaceCall(const TCHAR* Library, const TCHAR* Function, int32 X = 0, int32 Y = 0)
		{
			UFunction* Target = LibraryFunction(Library, Function);
			EXPECT_NE(Target, nullptr) << FStringToUTF8(Function);
			return Place<UK2Node_CallFunction>([Target](UK2Node_CallFunction& Node) { Node.SetFromFunction(Target); }, X, Y);
		}

		/** The node at the far end of the pin's only link. */
		static std::string FirstLineThatDiffers(const FString& A, const FString& B)
		{
			TArray<FString> LinesA;
			TArray<FString> LinesB;
			A.ParseIntoArrayLines(LinesA, false);
			B.ParseIntoArrayLines(LinesB, false);
			for (int32 Index = 0; Index < FMath::Min(LinesA.Num(), LinesB.Num()); ++Index)
			{
				if (LinesA[Index] != LinesB[Index])
				{
					return Str(FString::Printf(TEXT("line %d: '%s' then '%s'"), Index + 1, *LinesA[Index], *LinesB[Index]));
				}
			}
			return Str(FString::Printf(TEXT("%d lines then %d lines"), LinesA.Num(), LinesB.Num()));
		}

		static UEdGraphNode* FarNode(const UEdGraphPin* Pin)
		{
			return Pin->LinkedTo.Num() == 1 ? Pin->LinkedTo[0]->GetOwningNode() : nullptr;
		}
	};
}

// Wires that need a conversion get the node the editor inserts, wired on both sides, half way between.
TEST_F(NodesBSchema, ConnectingThroughAConversionInsertsTheConversionNode)
{
	struct FConversionCase
	{
		const TCHAR* FromLibrary;
		const TCHAR* FromFunction;
		const TCHAR* ToLibrary;
		const TCHAR* ToFunction;
		const TCHAR* ToPin;
		const char* ConversionTitle;
		const char* ConversionFunction;
	};
	const FConversionCase Cases[] = {
		{ TEXT("KismetMathLibrary"), TEXT("RandomInteger"), TEXT("KismetSystemLibrary"), TEXT("PrintString"), TEXT("InString"), nullptr, "Conv_IntToString" },
		{ TEXT("KismetMathLibrary"), TEXT("RandomInteger"), TEXT("KismetMathLibrary"), TEXT("Sin"), TEXT("A"), nullptr, "Conv_IntToDouble" },
		{ TEXT("KismetMathLibrary"), TEXT("RandomBool"), TEXT("KismetSystemLibrary"), TEXT("PrintString"), TEXT("InString"), nullptr, "Conv_BoolToString" },
	};
	for (const FConversionCase& Case : Cases)
	{
		SCOPED_TRACE(FStringToUTF8(Case.FromFunction) + " -> " + FStringToUTF8(Case.ToFunction));
		UK2Node_CallFunction* From = PlaceCall(Case.FromLibrary, Case.FromFunction, 0, 0);
		UK2Node_CallFunction* To = PlaceCall(Case.ToLibrary, Case.ToFunction, 400, 100);
		UEdGraphPin* Output = From->GetReturnValuePin();
		UEdGraphPin* Input = To->FindPin(Case.ToPin);
		ASSERT_NE(Input, nullptr);
		EXPECT_EQ(Schema->CanCreateConnection(Output, Input).Response, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE);
		const int32 NodesBefore = Graph->Nodes.Num();
		ASSERT_TRUE(Schema->TryCreateConnection(Output, Input)) << Str(Schema->GetLastConversionFailureReason());
		ASSERT_EQ(Graph->Nodes.Num(), NodesBefore + 1);
		UK2Node_CallFunction* Conversion = Cast<UK2Node_CallFunction>(FarNode(Output));
		ASSERT_NE(Conversion, nullptr);
		EXPECT_EQ(FarNode(Input), Conversion);
		EXPECT_EQ(Str(Conversion->GetFunctionName()), Case.ConversionFunction);
		EXPECT_TRUE(Conversion->IsNodePure());
		// Half way between the nodes, on the editor's 16-unit grid.
		EXPECT_EQ(Conversion->NodePosX, 208);
		EXPECT_EQ(Conversion->NodePosY, 48);
		EXPECT_TRUE(Conversion->NodeGuid.IsValid());
	}
}

TEST_F(NodesBSchema, SpecializedConversionsUseTheirOwnNodes)
{
	// A single value into an array input goes through Make Array.
	UK2Node_CallFunction* MakeInt = PlaceCall(TEXT("KismetMathLibrary"), TEXT("RandomInteger"));
	UK2Node_MacroInstance* ForEach = Place<UK2Node_MacroInstance>([](UK2Node_MacroInstance& Node) { Node.SetMacroGraph(UE::BlueprintGraph::FindStandardMacro(TEXT("ForEachLoop"))); }, 400, 0);
	UK2Node_MakeArray* Typed = Place<UK2Node_MakeArray>(200, 300);
	ASSERT_TRUE(Connect(MakeInt->GetReturnValuePin(), Typed->FindPin(TEXT("[0]"))));
	UK2Node_CallFunction* Sum = PlaceCall(TEXT("KismetMathLibrary"), TEXT("RandomInteger"), 0, 500);
	UEdGraphPin* ArrayInput = ForEach->FindPin(TEXT("Array"));
	ASSERT_TRUE(Connect(Typed->GetOutputPin(), ArrayInput));
	UK2Node_MacroInstance* Second = Place<UK2Node_MacroInstance>([](UK2Node_MacroInstance& Node) { Node.SetMacroGraph(UE::BlueprintGraph::FindStandardMacro(TEXT("ForEachLoop"))); }, 400, 400);
	UEdGraphPin* SecondArray = Second->FindPin(TEXT("Array"));
	// Typed so that a single int meets an int array.
	SecondArray->PinType.PinCategory = UEdGraphSchema_K2::PC_Int;
	EXPECT_EQ(Schema->CanCreateConnection(Sum->GetReturnValuePin(), SecondArray).Response, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE);
	ASSERT_TRUE(Schema->TryCreateConnection(Sum->GetReturnValuePin(), SecondArray)) << Str(Schema->GetLastConversionFailureReason());
	UK2Node_MakeArray* Inserted = Cast<UK2Node_MakeArray>(FarNode(SecondArray));
	ASSERT_NE(Inserted, nullptr);
	EXPECT_EQ(FarNode(Sum->GetReturnValuePin()), Inserted);

	// A plain byte into an enum selection goes through a safe Byte to Enum of the switch's enum.
	UEnum* ScaleMethod = FindObject<UEnum>(nullptr, TEXT("/Script/Engine.ESpawnActorScaleMethod"));
	UK2Node_SwitchEnum* Switch = Place<UK2Node_SwitchEnum>([ScaleMethod](UK2Node_SwitchEnum& Node) { Node.SetEnum(ScaleMethod); }, 400, 800);
	UK2Node_CallFunction* ToByte = PlaceCall(TEXT("KismetMathLibrary"), TEXT("Conv_IntToByte"), 0, 800);
	const int32 NodesBefore = Graph->Nodes.Num();
	EXPECT_EQ(Schema->CanCreateConnection(ToByte->GetReturnValuePin(), Switch->GetSelectionPin()).Response, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE);
	ASSERT_TRUE(Schema->TryCreateConnection(ToByte->GetReturnValuePin(), Switch->GetSelectionPin())) << Str(Schema->GetLastConversionFailureReason());
	EXPECT_EQ(Graph->Nodes.Num(), NodesBefore + 1);
	UK2Node_CastByteToEnum* ToEnum = Cast<UK2Node_CastByteToEnum>(FarNode(Switch->GetSelectionPin()));
	ASSERT_NE(ToEnum, nullptr);
	EXPECT_EQ(ToEnum->Enum, ScaleMethod);
	EXPECT_TRUE(ToEnum->bSafe);
	EXPECT_EQ(FarNode(ToByte->GetReturnValuePin()), ToEnum);
}

TEST_F(NodesBSchema, NodesVetoConnectionsWithTheEditorsWords)
{
	UK2Node_DynamicCast* Cast = Place<UK2Node_DynamicCast>([](UK2Node_DynamicCast& Node) { Node.TargetType = EngineClass(TEXT("Pawn")); });
	UK2Node_CallFunction* MakeInt = PlaceCall(TEXT("KismetMathLibrary"), TEXT("RandomInteger"), -300, 0);
	FPinConnectionResponse Response = Schema->CanCreateConnection(MakeInt->GetReturnValuePin(), Cast->GetCastSourcePin());
	EXPECT_EQ(Response.Response, CONNECT_RESPONSE_DISALLOW);
	EXPECT_EQ(Str(Response.Message), "You can only cast objects/interfaces.");

	UK2Node_SwitchEnum* Switch = Place<UK2Node_SwitchEnum>([](UK2Node_SwitchEnum& Node) { Node.SetEnum(FindObject<UEnum>(nullptr, TEXT("/Script/Engine.ESpawnActorScaleMethod"))); });
	UK2Node_SwitchEnum* Other = Place<UK2Node_SwitchEnum>([](UK2Node_SwitchEnum& Node) { Node.SetEnum(FindObject<UEnum>(nullptr, TEXT("/Script/Engine.ESpawnActorCollisionHandlingMethod"))); });
	// An entry of another enum never matches.
	UEdGraphPin* OtherEnumValue = Other->GetSelectionPin();
	FString Reason;
	EXPECT_TRUE(Switch->IsConnectionDisallowed(Switch->GetSelectionPin(), OtherEnumValue, Reason));

	// Exec outputs take one wire: a second replaces the first.
	UK2Node_IfThenElse* Branch = Place<UK2Node_IfThenElse>();
	UK2Node_ExecutionSequence* First = Place<UK2Node_ExecutionSequence>(300, 0);
	UK2Node_ExecutionSequence* Second = Place<UK2Node_ExecutionSequence>(300, 200);
	ASSERT_TRUE(Connect(Branch->GetThenPin(), First->GetExecPin()));
	EXPECT_EQ(Schema->CanCreateConnection(Branch->GetThenPin(), Second->GetExecPin()).Response, CONNECT_RESPONSE_BREAK_OTHERS_A);
	ASSERT_TRUE(Connect(Branch->GetThenPin(), Second->GetExecPin()));
	EXPECT_EQ(First->GetExecPin()->LinkedTo.Num(), 0);
}

TEST_F(NodesBSchema, CompilerChecksReportTheEditorsMessages)
{
	struct FValidationCase
	{
		const char* What;
		std::function<UEdGraphNode*()> Make;
		const char* Expected;
	};
	const FValidationCase Cases[] = {
		{ "cast without class", [this] { return Place<UK2Node_DynamicCast>(); },
			"Node Bad cast node has an invalid target type, please delete and recreate it\n" },
		{ "switch without enum", [this] { return Place<UK2Node_SwitchEnum>(); },
			"Switch on (bad enum) must have a valid enum - check log for 'Failed import' add a redirector or recreate the enum\n" },
		{ "duplicate string cases", [this] { return Place<UK2Node_SwitchString>([](UK2Node_SwitchString& Node) { Node.PinNames = { TEXT("Open"), TEXT("open") }; }); },
			"Switch on String contains duplicate cases.\n" },
		{ "distinct case-sensitive cases", [this] { return Place<UK2Node_SwitchString>([](UK2Node_SwitchString& Node) { Node.PinNames = { TEXT("Open"), TEXT("open") }; Node.SetCaseSensitive(true); }); },
			"" },
		{ "make without struct", [this] { return Place<UK2Node_MakeStruct>(); }, "No Struct in Make <unknown struct>\n" },
		{ "sound branch", [this] { return Place<UK2Node_IfThenElse>(); }, "" },
	};
	for (const FValidationCase& Case : Cases)
	{
		SCOPED_TRACE(Case.What);
		UEdGraphNode* Node = Case.Make();
		FCompilerResultsLog Log;
		Node->ValidateNodeDuringCompilation(Log);
		EXPECT_EQ(Messages(Log), Case.Expected);
	}

	// A cast that cannot fail is only a note; one that cannot succeed is a warning.
	UK2Node_CallFunction* GetOwner = PlaceCall(TEXT("Actor"), TEXT("GetOwner"));
	UK2Node_DynamicCast* Needless = Place<UK2Node_DynamicCast>([](UK2Node_DynamicCast& Node) { Node.TargetType = AActor::StaticClass(); });
	ASSERT_TRUE(Connect(GetOwner->GetReturnValuePin(), Needless->GetCastSourcePin()));
	FCompilerResultsLog NeedlessLog;
	Needless->ValidateNodeDuringCompilation(NeedlessLog);
	EXPECT_EQ(Messages(NeedlessLog), "'ReturnValue' is already a 'Actor', you don't need Cast To Actor.\n");
	EXPECT_EQ(NeedlessLog.NumErrors, 0);
}

TEST_F(NodesBSchema, HeightEstimatesFollowTheEditorsRule)
{
	// Calls: 80 plus 18 per row of visible pins; other nodes a fixed 48.
	UK2Node_CallFunction* Print = PlaceCall(TEXT("KismetSystemLibrary"), TEXT("PrintString"));
	int32 Inputs = 0;
	int32 Outputs = 0;
	for (const UEdGraphPin* Pin : Print->Pins)
	{
		if (!Pin->bHidden)
		{
			(Pin->Direction == EGPD_Input ? Inputs : Outputs)++;
		}
	}
	EXPECT_GT(Inputs, Outputs);
	EXPECT_FLOAT_EQ(UEdGraphSchema_K2::EstimateNodeHeight(Print), 80.0f + 18.0f * float(Inputs));
	UK2Node_PromotableOperator* Add = Place<UK2Node_PromotableOperator>([](UK2Node_PromotableOperator& Node) { Node.SetFromFunction(LibraryFunction(TEXT("KismetMathLibrary"), TEXT("Add_DoubleDouble"))); });
	EXPECT_FLOAT_EQ(UEdGraphSchema_K2::EstimateNodeHeight(Add), 80.0f + 18.0f * 2.0f);
	EXPECT_FLOAT_EQ(UEdGraphSchema_K2::EstimateNodeHeight(Place<UK2Node_IfThenElse>()), 48.0f);
	EXPECT_FLOAT_EQ(UEdGraphSchema_K2::EstimateNodeHeight(Place<UK2Node_Select>()), 48.0f);
	EXPECT_FLOAT_EQ(UEdGraphSchema_K2::EstimateNodeHeight(nullptr), 0.0f);

	// Events: 48 plus 16 per row (delegate output and then; the rest of BeginPlay's pins are none).
	UK2Node_Event* BeginPlay = Place<UK2Node_Event>([](UK2Node_Event& Node) { Node.EventReference.SetExternalMember(TEXT("ReceiveBeginPlay"), AActor::StaticClass()); Node.bOverrideFunction = true; });
	int32 EventOutputs = 0;
	for (const UEdGraphPin* Pin : BeginPlay->Pins)
	{
		EventOutputs += (!Pin->bHidden && Pin->Direction == EGPD_Output) ? 1 : 0;
	}
	EXPECT_GT(EventOutputs, 0);
	EXPECT_FLOAT_EQ(UEdGraphSchema_K2::EstimateNodeHeight(BeginPlay), 48.0f + 16.0f * float(EventOutputs));
}

// Every node saves its settings and pins, loads back the same, and saves to the same bytes again.
TEST_F(NodesBSchema, NodesSurviveSaveAndLoad)
{
	UK2Node_SwitchInteger* Switch = Place<UK2Node_SwitchInteger>([](UK2Node_SwitchInteger& Node) { Node.StartIndex = 3; }, 0, 0);
	Switch->AddPinToSwitchNode();
	Switch->AddPinToSwitchNode();
	UK2Node_ExecutionSequence* Sequence = Place<UK2Node_ExecutionSequence>(300, 0);
	Sequence->AddInputPin();
	ASSERT_TRUE(Connect(Switch->FindPin(TEXT("4")), Sequence->GetExecPin()));
	Place<UK2Node_DynamicCast>([](UK2Node_DynamicCast& Node) { Node.TargetType = EngineClass(TEXT("Pawn")); Node.SetPurity(true); }, 0, 200);
	Place<UK2Node_MacroInstance>([](UK2Node_MacroInstance& Node) { Node.SetMacroGraph(UE::BlueprintGraph::FindStandardMacro(TEXT("ForEachLoop"))); }, 0, 400);
	UK2Node_Select* Select = Place<UK2Node_Select>(0, 600);
	Select->AddInputPin();
	Place<UK2Node_MakeStruct>([](UK2Node_MakeStruct& Node) { Node.StructType = FindObject<UScriptStruct>(nullptr, TEXT("/Script/Engine.SubtitleCue")); }, 0, 800);
	UK2Node_PromotableOperator* Add = Place<UK2Node_PromotableOperator>([](UK2Node_PromotableOperator& Node) { Node.SetFromFunction(LibraryFunction(TEXT("KismetMathLibrary"), TEXT("Add_DoubleDouble"))); }, 0, 1000);
	Add->AddInputPin();

	TArray<std::string> Before;
	for (const UEdGraphNode* Node : Graph->Nodes)
	{
		Before.Add(Str(Node->GetClass()->GetName()) + " " + Str(Node->GetNodeTitle(ENodeTitleType::FullTitle)) + ": " + DescribePins(Node));
	}

	FString FirstBytes;
	ASSERT_TRUE(SaveAndReload(&FirstBytes));
	TArray<std::string> After;
	for (const UEdGraphNode* Node : Graph->Nodes)
	{
		After.Add(Str(Node->GetClass()->GetName()) + " " + Str(Node->GetNodeTitle(ENodeTitleType::FullTitle)) + ": " + DescribePins(Node));
	}
	EXPECT_EQ(After, Before);

	UK2Node_SwitchInteger* LoadedSwitch = FindNode<UK2Node_SwitchInteger>();
	ASSERT_NE(LoadedSwitch, nullptr);
	EXPECT_EQ(LoadedSwitch->StartIndex, 3);
	UK2Node_ExecutionSequence* LoadedSequence = FindNode<UK2Node_ExecutionSequence>();
	ASSERT_NE(LoadedSequence, nullptr);
	ASSERT_EQ(LoadedSequence->GetExecPin()->LinkedTo.Num(), 1);
	EXPECT_EQ(LoadedSequence->GetExecPin()->LinkedTo[0]->GetOwningNode(), LoadedSwitch);
	UK2Node_DynamicCast* LoadedCast = FindNode<UK2Node_DynamicCast>();
	ASSERT_NE(LoadedCast, nullptr);
	EXPECT_TRUE(LoadedCast->IsNodePure());
	EXPECT_EQ(LoadedCast->TargetType.Get(), EngineClass(TEXT("Pawn")));
	UK2Node_MacroInstance* LoadedMacro = FindNode<UK2Node_MacroInstance>();
	ASSERT_NE(LoadedMacro, nullptr);
	EXPECT_EQ(LoadedMacro->GetMacroGraph(), UE::BlueprintGraph::FindStandardMacro(TEXT("ForEachLoop")));
	EXPECT_EQ(FindNode<UK2Node_Select>()->NumOptionPins, 3);
	EXPECT_EQ(FindNode<UK2Node_PromotableOperator>()->NumAdditionalInputs, 1);

	const FString SecondBytes = SaveBytes();
	EXPECT_TRUE(SecondBytes == FirstBytes) << FirstLineThatDiffers(FirstBytes, SecondBytes);

	// Rebuilding every loaded node gives the same pins again.
	for (UEdGraphNode* Node : Graph->Nodes)
	{
		Node->ReconstructNode();
	}
	TArray<std::string> Rebuilt;
	for (const UEdGraphNode* Node : Graph->Nodes)
	{
		Rebuilt.Add(Str(Node->GetClass()->GetName()) + " " + Str(Node->GetNodeTitle(ENodeTitleType::FullTitle)) + ": " + DescribePins(Node));
	}
	EXPECT_EQ(Rebuilt, Before);
	ASSERT_EQ(LoadedSequence->GetExecPin()->LinkedTo.Num(), 1);
}

TEST_F(NodesBSchema, StringSwitchCasesSurviveSaveAndLoad)
{
	UK2Node_SwitchString* Switch = Place<UK2Node_SwitchString>([](UK2Node_SwitchString& Node) { Node.PinNames = { TEXT("Open") }; Node.SetCaseSensitive(true); });
	Switch->AddPinToSwitchNode();
	ASSERT_TRUE(SaveAndReload());
	UK2Node_SwitchString* Loaded = FindNode<UK2Node_SwitchString>();
	ASSERT_NE(Loaded, nullptr);
	EXPECT_TRUE(Loaded->bIsCaseSensitive);
	EXPECT_EQ(Str(Loaded->FunctionName), "NotEqual_StrStr");
	ASSERT_EQ(Loaded->PinNames.Num(), 2);
	EXPECT_EQ(Str(Loaded->PinNames[1]), "Case_0");
	EXPECT_EQ(DescribePins(Loaded), "Default:out:exec, execute:in:exec, Selection:in:string, NotEqual_StrStr:in:object (hidden), Open:out:exec, Case_0:out:exec");
}

TEST_F(NodesBSchema, FunctionSettingsReachTheNodesThatHoldThem)
{
	// AutoCreateRefTerm names, spaces and all, the parameters that need no wire.
	UK2Node_CallFunction* MapAdd = PlaceCall(TEXT("BlueprintMapLibrary"), TEXT("Map_Add"));
	ASSERT_NE(MapAdd->FindPin(TEXT("Key")), nullptr);
	EXPECT_TRUE(UEdGraphSchema_K2::IsAutoCreateRefTerm(MapAdd->FindPin(TEXT("Key"))));
	EXPECT_TRUE(UEdGraphSchema_K2::IsAutoCreateRefTerm(MapAdd->FindPin(TEXT("Value"))));
	EXPECT_FALSE(UEdGraphSchema_K2::IsAutoCreateRefTerm(MapAdd->FindPin(TEXT("TargetMap"))));
	EXPECT_FALSE(UEdGraphSchema_K2::IsAutoCreateRefTerm(Place<UK2Node_IfThenElse>()->GetConditionPin()));

	// Extra flags and editability go to the function graph's entry (and result) nodes.
	UEdGraph* Function = NewObject<UEdGraph>(Blueprint, TEXT("OpenDoor"), RF_Transactional);
	Function->Schema = UEdGraphSchema_K2::StaticClass();
	Blueprint->FunctionGraphs.Add(Function);
	UK2Node_FunctionEntry* Entry = static_cast<UK2Node_FunctionEntry*>(Function->CreateNode(UK2Node_FunctionEntry::StaticClass(), false, false));
	UK2Node_FunctionResult* Result = static_cast<UK2Node_FunctionResult*>(Function->CreateNode(UK2Node_FunctionResult::StaticClass(), false, false));
	const int32 Before = Entry->GetExtraFlags();
	Schema->AddExtraFunctionFlags(Function, FUNC_BlueprintPure);
	EXPECT_EQ(Entry->GetExtraFlags(), Before | int32(FUNC_BlueprintPure));
	Schema->MarkFunctionEntryAsEditable(Function, true);
	EXPECT_TRUE(Entry->bIsEditable);
	EXPECT_TRUE(Result->bIsEditable);
	Schema->MarkFunctionEntryAsEditable(Function, false);
	EXPECT_FALSE(Entry->IsEditable());
	EXPECT_FALSE(Result->IsEditable());
}
