#include "NodesBTestUtils.h"

#include "K2Node_CallFunction.h"
#include "K2Node_CommutativeAssociativeBinaryOperator.h"
#include "K2Node_DynamicCast.h"
#include "K2Node_ExecutionSequence.h"
#include "K2Node_GetArrayItem.h"
#include "K2Node_IfThenElse.h"
#include "K2Node_Knot.h"
#include "K2Node_MacroInstance.h"
#include "K2Node_MakeArray.h"
#include "K2Node_PromotableOperator.h"
#include "K2Node_Select.h"
#include "K2Node_SwitchEnum.h"
#include "K2Node_SwitchInteger.h"
#include "K2Node_SwitchString.h"

using namespace NodesBTest;

namespace
{
	class NodesBEditing : public FNodesBFixture
	{
	protected:
		/** A call of a library function, placed as the editor places one. */
		UK2Node_CallFunction* PlaceCall(const TCHAR* Library, const TCHAR* Function, int32 X = 0, int32 Y = 0)
		{
			UFunction* Target = LibraryFunction(Library, Function);
			EXPECT_NE(Target, nullptr) << FStringToUTF8(Function);
			return Place<UK2Node_CallFunction>([Target](UK2Node_CallFunction& Node) { Node.SetFromFunction(Target); }, X, Y);
		}
	};

	std::string OutputNames(const UEdGraphNode* Node)
	{
		std::string Result;
		for (const UEdGraphPin* Pin : Node->Pins)
		{
			if (Pin->Direction == EGPD_Output)
			{
				Result += (Result.empty() ? "" : ",") + Str(Pin->PinName);
			}
		}
		return Result;
	}
}

TEST_F(NodesBEditing, SequenceOutputsAreAddedRemovedAndRenumbered)
{
	UK2Node_ExecutionSequence* Sequence = Place<UK2Node_ExecutionSequence>();
	UK2Node_IfThenElse* Second = Place<UK2Node_IfThenElse>(300, 0);
	EXPECT_FALSE(Sequence->CanRemoveExecutionPin());
	Sequence->AddInputPin();
	EXPECT_EQ(OutputNames(Sequence), "then_0,then_1,then_2");
	EXPECT_TRUE(Sequence->CanRemoveExecutionPin());

	ASSERT_TRUE(Connect(Sequence->GetThenPinGivenIndex(2), Second->GetExecPin()));
	Sequence->RemovePinFromExecutionNode(Sequence->GetThenPinGivenIndex(0));
	// The outputs close ranks: the wired third output is now the second.
	EXPECT_EQ(OutputNames(Sequence), "then_0,then_1");
	ASSERT_EQ(Sequence->GetThenPinGivenIndex(1)->LinkedTo.Num(), 1);
	EXPECT_EQ(Sequence->GetThenPinGivenIndex(1)->LinkedTo[0], Second->GetExecPin());

	Sequence->InsertPinIntoExecutionNode(Sequence->GetThenPinGivenIndex(0), EPinInsertPosition::Before);
	EXPECT_EQ(OutputNames(Sequence), "then_0,then_1,then_2");
	EXPECT_EQ(Sequence->GetThenPinGivenIndex(2)->LinkedTo.Num(), 1);

	// A rebuilt sequence keeps all its outputs and their links.
	Sequence->ReconstructNode();
	EXPECT_EQ(OutputNames(Sequence), "then_0,then_1,then_2");
	ASSERT_EQ(Sequence->GetThenPinGivenIndex(2)->LinkedTo.Num(), 1);
	EXPECT_EQ(Sequence->GetThenPinGivenIndex(2)->LinkedTo[0], Second->GetExecPin());
	// The add-pin interface is how tools find the button.
	EXPECT_NE(dynamic_cast<IK2Node_AddPinInterface*>(static_cast<UEdGraphNode*>(Sequence)), nullptr);
}

TEST_F(NodesBEditing, SwitchCasesFollowTheirRules)
{
	UK2Node_SwitchInteger* SwitchInt = Place<UK2Node_SwitchInteger>();
	SwitchInt->AddPinToSwitchNode();
	SwitchInt->AddPinToSwitchNode();
	SwitchInt->AddPinToSwitchNode();
	EXPECT_EQ(OutputNames(SwitchInt), "Default,0,1,2");
	// Only the last case goes, so the values stay consecutive.
	EXPECT_FALSE(SwitchInt->CanRemoveExecutionPin(SwitchInt->FindPin(TEXT("0"))));
	EXPECT_TRUE(SwitchInt->CanRemoveExecutionPin(SwitchInt->FindPin(TEXT("2"))));
	SwitchInt->RemovePinFromSwitchNode(SwitchInt->FindPin(TEXT("2")));
	EXPECT_EQ(OutputNames(SwitchInt), "Default,0,1");
	SwitchInt->SetStartIndex(5);
	EXPECT_EQ(OutputNames(SwitchInt), "Default,5,6");
	// Removing the default output turns it off; the other pins stay.
	SwitchInt->RemovePinFromSwitchNode(SwitchInt->GetDefaultPin());
	EXPECT_FALSE(SwitchInt->bHasDefaultPin);
	EXPECT_EQ(OutputNames(SwitchInt), "5,6");
	EXPECT_EQ(SwitchInt->GetDefaultPin(), nullptr);

	UK2Node_SwitchString* SwitchString = Place<UK2Node_SwitchString>();
	SwitchString->AddPinToSwitchNode();
	SwitchString->AddPinToSwitchNode();
	EXPECT_EQ(OutputNames(SwitchString), "Default,Case_0,Case_1");
	SwitchString->RemovePinFromSwitchNode(SwitchString->FindPin(TEXT("Case_0")));
	EXPECT_EQ(SwitchString->PinNames.Num(), 1);
	EXPECT_EQ(Str(SwitchString->PinNames[0]), "Case_1");
	SwitchString->SetCaseSensitive(true);
	EXPECT_EQ(Str(SwitchString->FunctionName), "NotEqual_StrStr");
	EXPECT_NE(SwitchString->FindPin(TEXT("NotEqual_StrStr")), nullptr);

	// Enum switches hide outputs instead of removing them.
	UK2Node_SwitchEnum* SwitchEnum = Place<UK2Node_SwitchEnum>([](UK2Node_SwitchEnum& Node) { Node.SetEnum(FindObject<UEnum>(nullptr, TEXT("/Script/Engine.ESpawnActorScaleMethod"))); });
	UEdGraphPin* First = SwitchEnum->FindPin(TEXT("OverrideRootScale"));
	SwitchEnum->RemovePinFromSwitchNode(First);
	EXPECT_TRUE(First->bAdvancedView);
	SwitchEnum->AddPinToSwitchNode();
	EXPECT_FALSE(First->bAdvancedView);
	EXPECT_EQ(Str(First->PinFriendlyName), "Override Root Component Scale");
}

TEST_F(NodesBEditing, SelectOptionsGrowShrinkAndFollowTheIndexType)
{
	UK2Node_Select* Select = Place<UK2Node_Select>();
	EXPECT_TRUE(Select->CanAddPin());
	EXPECT_FALSE(Select->CanRemoveOptionPinToNode());
	Select->AddInputPin();
	TArray<UEdGraphPin*> Options;
	Select->GetOptionPins(Options);
	EXPECT_EQ(Options.Num(), 3);
	Select->RemoveOptionPinToNode();
	Select->GetOptionPins(Options);
	EXPECT_EQ(Options.Num(), 2);

	// A bool wired into the index gives the options False and True, and no more can be added.
	UK2Node_IfThenElse* Branch = Place<UK2Node_IfThenElse>(-300, 0);
	UK2Node_CallFunction* Random = PlaceCall(TEXT("KismetMathLibrary"), TEXT("RandomBool"), -300, 100);
	(void)Branch;
	ASSERT_TRUE(Connect(Random->GetReturnValuePin(), Select->GetIndexPin()));
	EXPECT_EQ(Str(Select->GetIndexPin()->PinType.PinCategory), "bool");
	Select->GetOptionPins(Options);
	ASSERT_EQ(Options.Num(), 2);
	EXPECT_EQ(Str(Options[0]->PinFriendlyName), "false");
	EXPECT_EQ(Str(Options[1]->PinFriendlyName), "true");
	EXPECT_FALSE(Select->CanAddPin());
	// The index keeps its link through the rebuild.
	EXPECT_EQ(Select->GetIndexPin()->LinkedTo.Num(), 1);
}

TEST_F(NodesBEditing, WildcardsTakeTheTypeTheyAreWiredTo)
{
	UK2Node_CallFunction* MakeInt = PlaceCall(TEXT("KismetMathLibrary"), TEXT("RandomInteger"));

	// Select: one option typed by a link types the result and the other options.
	UK2Node_Select* Select = Place<UK2Node_Select>(300, 0);
	TArray<UEdGraphPin*> Options;
	Select->GetOptionPins(Options);
	ASSERT_TRUE(Connect(MakeInt->GetReturnValuePin(), Options[0]));
	EXPECT_EQ(Str(Select->GetReturnValuePin()->PinType.PinCategory), "int");
	Select->GetOptionPins(Options);
	EXPECT_EQ(Str(Options[1]->PinType.PinCategory), "int");
	Schema->BreakSinglePinLink(MakeInt->GetReturnValuePin(), Options[0]);
	EXPECT_EQ(Str(Select->GetReturnValuePin()->PinType.PinCategory), "wildcard");

	// Make Array: the first element decides the array's type.
	UK2Node_MakeArray* MakeArray = Place<UK2Node_MakeArray>(300, 200);
	ASSERT_TRUE(Connect(MakeInt->GetReturnValuePin(), MakeArray->FindPin(TEXT("[0]"))));
	EXPECT_EQ(DescribePins(MakeArray), "Array:out:int[], [0]:in:int");
	MakeArray->AddInputPin();
	EXPECT_EQ(DescribePins(MakeArray), "Array:out:int[], [0]:in:int, [1]:in:int");
	MakeArray->RemoveInputPin(MakeArray->FindPin(TEXT("[0]")));
	// The remaining element is renamed; nothing is wired any more, so the type is free again.
	EXPECT_EQ(DescribePins(MakeArray), "Array:out:wildcard[], [0]:in:wildcard");

	// Array get: the array's element type types the item, returned by reference for values.
	UK2Node_GetArrayItem* Get = Place<UK2Node_GetArrayItem>(600, 200);
	MakeArray->AddInputPin();
	ASSERT_TRUE(Connect(MakeInt->GetReturnValuePin(), MakeArray->FindPin(TEXT("[1]"))));
	ASSERT_TRUE(Connect(MakeArray->GetOutputPin(), Get->GetTargetArrayPin()));
	EXPECT_EQ(DescribePins(Get), "Array:in:int[], Dimension 1:in:int, Output:out:int");
	EXPECT_TRUE(Get->GetResultPin()->PinType.bIsReference);
	EXPECT_EQ(Str(Get->GetNodeTitle(ENodeTitleType::ListView)), "Get (a ref)");

	// Reroute: carries whatever flows into it on.
	UK2Node_Knot* Knot = Place<UK2Node_Knot>(300, 400);
	ASSERT_TRUE(Connect(MakeInt->GetReturnValuePin(), Knot->GetInputPin()));
	EXPECT_EQ(Str(Knot->GetOutputPin()->PinType.PinCategory), "int");

	// Cast source: an object link makes it an object pin.
	UK2Node_DynamicCast* Cast = Place<UK2Node_DynamicCast>([](UK2Node_DynamicCast& Node) { Node.TargetType = EngineClass(TEXT("Pawn")); }, 300, 600);
	UK2Node_CallFunction* GetOwner = PlaceCall(TEXT("Actor"), TEXT("GetOwner"), 0, 600);
	ASSERT_TRUE(Connect(GetOwner->GetReturnValuePin(), Cast->GetCastSourcePin()));
	EXPECT_EQ(Str(Cast->GetCastSourcePin()->PinType.PinCategory), "object");

	// Macro: wiring an array of ints into ForEachLoop types the element output.
	UK2Node_MacroInstance* ForEach = Place<UK2Node_MacroInstance>([](UK2Node_MacroInstance& Node) { Node.SetMacroGraph(UE::BlueprintGraph::FindStandardMacro(TEXT("ForEachLoop"))); }, 900, 0);
	ASSERT_TRUE(Connect(MakeArray->GetOutputPin(), ForEach->FindPin(TEXT("Array"))));
	EXPECT_EQ(DescribePins(ForEach), "Exec:in:exec, Array:in:int[], LoopBody:out:exec, Array Element:out:int, Array Index:out:int, Completed:out:exec");
	EXPECT_EQ(ForEach->FindPin(TEXT("Array"))->LinkedTo.Num(), 1);
}

TEST_F(NodesBEditing, OperatorsPromoteAndTakeMoreInputs)
{
	UFunction* AddDoubles = LibraryFunction(TEXT("KismetMathLibrary"), TEXT("Add_DoubleDouble"));
	ASSERT_NE(AddDoubles, nullptr);
	UK2Node_PromotableOperator* Add = Place<UK2Node_PromotableOperator>([AddDoubles](UK2Node_PromotableOperator& Node) { Node.SetFromFunction(AddDoubles); }, 300, 0);
	EXPECT_EQ(Str(Add->OperationName), "Add");
	UK2Node_CallFunction* MakeInt = PlaceCall(TEXT("KismetMathLibrary"), TEXT("RandomInteger"));
	ASSERT_TRUE(Connect(MakeInt->GetReturnValuePin(), Add->FindPin(TEXT("A"))));
	EXPECT_EQ(Str(Add->GetFunctionName()), "Add_IntInt");
	EXPECT_EQ(DescribePins(Add), "A:in:int, B:in:int, ReturnValue:out:int");

	// A wider operand promotes the whole node.
	UK2Node_CallFunction* MakeDouble = PlaceCall(TEXT("KismetMathLibrary"), TEXT("RandomFloat"), 0, 200);
	const FPinConnectionResponse Response = Schema->CanCreateConnection(MakeDouble->GetReturnValuePin(), Add->FindPin(TEXT("B")));
	EXPECT_EQ(Response.Response, CONNECT_RESPONSE_MAKE_WITH_PROMOTION) << Str(Response.Message);
	ASSERT_TRUE(Connect(MakeDouble->GetReturnValuePin(), Add->FindPin(TEXT("B"))));
	EXPECT_EQ(Str(Add->GetFunctionName()), "Add_DoubleDouble");
	EXPECT_EQ(Str(Add->GetOutputPin()->PinType.PinCategory), "real");
	EXPECT_EQ(Add->FindPin(TEXT("A"))->LinkedTo.Num(), 1);

	Add->AddInputPin();
	EXPECT_EQ(DescribePins(Add), "A:in:real/double, B:in:real/double, ReturnValue:out:real/double, C:in:real/double");
	Add->RemoveInputPin(Add->FindPin(TEXT("A")));
	EXPECT_EQ(Add->NumAdditionalInputs, 0);
	EXPECT_EQ(Str(Add->Pins[0]->PinName), "A");

	// Comparisons answer with a bool and take no extra inputs.
	UK2Node_PromotableOperator* Less = Place<UK2Node_PromotableOperator>([](UK2Node_PromotableOperator& Node) { Node.SetFromFunction(LibraryFunction(TEXT("KismetMathLibrary"), TEXT("Less_DoubleDouble"))); });
	EXPECT_FALSE(Less->CanAddPin());
	FString Reason;
	UK2Node_CallFunction* Vector = PlaceCall(TEXT("KismetMathLibrary"), TEXT("RandomUnitVector"));
	EXPECT_TRUE(Less->IsConnectionDisallowed(Less->FindPin(TEXT("A")), Vector->GetReturnValuePin(), Reason));
	EXPECT_EQ(Str(Reason), "No matching 'Less' function for 'Vector'");

	// The older operator node: the call's pins, then the added ones.
	UK2Node_CommutativeAssociativeBinaryOperator* Or = Place<UK2Node_CommutativeAssociativeBinaryOperator>([](UK2Node_CommutativeAssociativeBinaryOperator& Node) {
		Node.SetFromFunction(LibraryFunction(TEXT("KismetMathLibrary"), TEXT("Add_IntInt")));
	});
	Or->AddInputPin();
	Or->AddInputPin();
	EXPECT_EQ(DescribePins(Or), "self:in:object (hidden), A:in:int, B:in:int, ReturnValue:out:int, C:in:int, D:in:int");
	Or->RemoveInputPin(Or->FindPin(TEXT("B")));
	EXPECT_EQ(DescribePins(Or), "self:in:object (hidden), A:in:int, ReturnValue:out:int, B:in:int, C:in:int");
}
