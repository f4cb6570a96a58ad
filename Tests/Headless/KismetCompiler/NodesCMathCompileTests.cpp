#include "Headless/UnrealEd/EditorTestUtils.h"

#include "GameFramework/Actor.h"
#include "K2Node_CallFunction.h"
#include "K2Node_MathExpression.h"
#include "K2Node_Tunnel.h"
#include "K2Node_VariableGet.h"
#include "Logging/TokenizedMessage.h"

using namespace EditorTest;

namespace
{
	class NodesCMathCompile : public FEditorFixture
	{
	protected:
		NodesCMathCompile() : FEditorFixture(TEXT("NodesCMathCompile")) {}

		static UK2Node_MathExpression* PlaceExpression(UEdGraph* Graph, const TCHAR* Expression)
		{
			UK2Node_MathExpression* Node = static_cast<UK2Node_MathExpression*>(Graph->CreateNode(UK2Node_MathExpression::StaticClass(), false, false));
			Node->CreateNewGuid();
			Node->PostPlacedNewNode();
			Node->AllocateDefaultPins();
			Node->OnRenameNode(Expression);
			return Node;
		}

		static FCompilerResultsLog Compile(UBlueprint* Blueprint)
		{
			FCompilerResultsLog Log;
			FKismetEditorUtilities::CompileBlueprint(Blueprint, EBlueprintCompileOptions::None, &Log);
			return Log;
		}

		static std::string InnerNodes(const UK2Node_MathExpression* Node)
		{
			std::string Result;
			for (const UEdGraphNode* Inner : Node->BoundGraph->Nodes)
			{
				if (const UK2Node_VariableGet* Get = Cast<UK2Node_VariableGet>(Inner))
				{
					Result += (Result.empty() ? "get " : " get ") + U8(Get->GetVarName());
				}
				else if (const UK2Node_CallFunction* Call = Cast<UK2Node_CallFunction>(Inner))
				{
					Result += (Result.empty() ? "" : " ") + U8(Call->GetFunctionName());
				}
			}
			return Result;
		}

		static FEdGraphPinType DoubleType() { return PinType(UEdGraphSchema_K2::PC_Real, nullptr, UEdGraphSchema_K2::PC_Double); }
	};
}

TEST_F(NodesCMathCompile, ASoundExpressionCompilesAndABadOneFailsWithItsMessage)
{
	UBlueprint* Blueprint = Create(AActor::StaticClass(), TEXT("BP_Math"));
	ASSERT_NE(Blueprint, nullptr);
	UEdGraph* EventGraph = Blueprint->UbergraphPages[0];
	UK2Node_MathExpression* Sound = PlaceExpression(EventGraph, TEXT("sin(x) * 2 + y"));

	FCompilerResultsLog Clean = Compile(Blueprint);
	EXPECT_EQ(Clean.NumErrors, 0) << Messages(Clean);
	EXPECT_EQ(Clean.NumWarnings, 0) << Messages(Clean);
	EXPECT_EQ(Blueprint->Status, BS_UpToDate);
	// Compiling rebuilds the expression's graph: the node is as it was.
	EXPECT_EQ(U8(Sound->Expression), "(((sin(x)) * 2) + y)");
	EXPECT_EQ(Sound->BoundGraph->Nodes.Num(), 5);
	EXPECT_FALSE(Sound->bHasCompilerMessage);

	UK2Node_MathExpression* Bad = PlaceExpression(EventGraph, TEXT("foo(x) + 1"));
	FCompilerResultsLog Failed = Compile(Blueprint);
	EXPECT_EQ(Failed.NumErrors, 2) << Messages(Failed);
	EXPECT_NE(Messages(Failed).find("Unknown function 'foo' in the expression: 'foo(x) + 1'\n"), std::string::npos) << Messages(Failed);
	EXPECT_EQ(Blueprint->Status, BS_Error);
	// The node shows the message once, however often it was rebuilt.
	EXPECT_TRUE(Bad->bHasCompilerMessage);
	EXPECT_EQ(Bad->ErrorType, int32(EMessageSeverity::Error));
	EXPECT_EQ(U8(Bad->ErrorMsg), "Unknown function 'foo' in the expression: 'foo(x) + 1'\nFailed to generate argument #1 for the '+' function, in the expression: 'foo(x) + 1'");
	EXPECT_FALSE(Sound->bHasCompilerMessage);
}

TEST_F(NodesCMathCompile, BlueprintVariablesAreReadInsteadOfBecomingInputs)
{
	UBlueprint* Blueprint = Create(AActor::StaticClass(), TEXT("BP_MathVars"));
	ASSERT_NE(Blueprint, nullptr);
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Health"), DoubleType()));
	UEdGraph* Function = AddFunction(Blueprint, TEXT("Compute"));
	ASSERT_TRUE(FBlueprintEditorUtils::AddLocalVariable(Blueprint, Function, TEXT("Scale"), DoubleType()));
	Compile(Blueprint);

	UK2Node_MathExpression* Node = PlaceExpression(Function, TEXT("Health * Scale + bonus"));
	EXPECT_FALSE(Node->bHasCompilerMessage) << U8(Node->ErrorMsg);
	EXPECT_EQ(InnerNodes(Node), "get Health get Scale Multiply_DoubleDouble Add_DoubleDouble");
	// Only the name that is no variable is an input of the node.
	ASSERT_EQ(Node->Pins.Num(), 2);
	EXPECT_EQ(U8(Node->Pins[0]->PinName), "bonus");
	// Variables are kept by guid, so the expression follows a rename.
	const FString HealthGuid = Blueprint->NewVariables[0].VarGuid.ToString(EGuidFormats::DigitsWithHyphensInBraces);
	EXPECT_TRUE(Node->Expression.Contains(HealthGuid)) << U8(Node->Expression);
	EXPECT_EQ(U8(Node->GetNodeTitle(ENodeTitleType::ListView)), "(Health * Scale) + bonus");
	FBlueprintEditorUtils::RenameMemberVariable(Blueprint, TEXT("Health"), TEXT("Life"));
	Node->ReconstructNode();
	EXPECT_EQ(U8(Node->GetNodeTitle(ENodeTitleType::ListView)), "(Life * Scale) + bonus");

	FCompilerResultsLog Log = Compile(Blueprint);
	EXPECT_EQ(Log.NumErrors, 0) << Messages(Log);
	EXPECT_EQ(InnerNodes(Node), "get Life get Scale Multiply_DoubleDouble Add_DoubleDouble");
}

TEST_F(NodesCMathCompile, SavedExpressionsLoadAndCompileAgain)
{
	UBlueprint* Blueprint = Create(AActor::StaticClass(), TEXT("BP_MathSaved"));
	ASSERT_NE(Blueprint, nullptr);
	PlaceExpression(Blueprint->UbergraphPages[0], TEXT("min(a, b) > 0.5"));
	Compile(Blueprint);

	FString Saved;
	UBlueprint* Loaded = SaveAndReload(Blueprint, &Saved);
	ASSERT_NE(Loaded, nullptr) << U8(Saved);
	TArray<UK2Node_MathExpression*> Found;
	Loaded->UbergraphPages[0]->GetNodesOfClass(Found);
	ASSERT_EQ(Found.Num(), 1);
	EXPECT_EQ(U8(Found[0]->GetNodeTitle(ENodeTitleType::ListView)), "(min(a, b)) > 0.500000");
	FCompilerResultsLog Log = Compile(Loaded);
	EXPECT_EQ(Log.NumErrors, 0) << Messages(Log);
	EXPECT_EQ(U8(Found[0]->FindPin(UEdGraphSchema_K2::PN_ReturnValue)->PinType.PinCategory), "bool");
}
