#include "NodesBTestUtils.h"

#include "K2Node_CallFunction.h"
#include "K2Node_MathExpression.h"
#include "K2Node_Tunnel.h"
#include "Logging/TokenizedMessage.h"
#include "Misc/CString.h"

using namespace NodesBTest;

namespace
{
	class MathExpression : public FNodesBFixture
	{
	protected:
		UK2Node_MathExpression* PlaceExpression(const TCHAR* Expression)
		{
			UK2Node_MathExpression* Node = Place<UK2Node_MathExpression>();
			Node->OnRenameNode(Expression);
			return Node;
		}

		/** The functions the bound graph calls, in the order the nodes were made. */
		static std::string InnerFunctions(const UK2Node_MathExpression* Node)
		{
			std::string Result;
			for (const UEdGraphNode* Inner : Node->BoundGraph->Nodes)
			{
				if (const UK2Node_CallFunction* Call = Cast<UK2Node_CallFunction>(Inner))
				{
					Result += (Result.empty() ? "" : " ") + Str(Call->GetFunctionName());
				}
			}
			return Result;
		}
	};

	struct FExpressionCase
	{
		const TCHAR* Expression;
		const char* Pins;
		const char* Functions;
		const char* Stored;
		const char* Title;
	};

	// The inner calls are chosen as the editor chooses them: the first library function under the operator's
	// compact title whose parameters take the arguments, after widening ints to doubles if nothing takes them as
	// they are. Names that are not variables become double inputs in the order they first appear.
	const FExpressionCase ExpressionCases[] = {
		{ TEXT("x + 1"), "x:in:real/double, ReturnValue:out:real/double", "Add_DoubleDouble", "(x + 1)", "x + 1" },
		{ TEXT("sin(x) * 2 + y"), "x:in:real/double, y:in:real/double, ReturnValue:out:real/double", "Sin Multiply_DoubleDouble Add_DoubleDouble",
			"(((sin(x)) * 2) + y)", "((sin(x)) * 2) + y" },
		{ TEXT("2 * x"), "x:in:real/double, ReturnValue:out:real/double", "Multiply_IntFloat", "(2 * x)", "2 * x" },
		{ TEXT("1 + 2 * 3"), "ReturnValue:out:int", "Multiply_IntInt Add_IntInt", "(1 + (2 * 3))", "1 + (2 * 3)" },
		{ TEXT("a - b - c"), "a:in:real/double, b:in:real/double, c:in:real/double, ReturnValue:out:real/double", "Subtract_DoubleDouble Subtract_DoubleDouble",
			"((a - b) - c)", "(a - b) - c" },
		{ TEXT("min(a, b) > 0.5"), "a:in:real/double, b:in:real/double, ReturnValue:out:bool", "FMin Greater_DoubleDouble",
			"((min(a, b)) > 0.500000)", "(min(a, b)) > 0.500000" },
		{ TEXT("min(1, 2)"), "ReturnValue:out:int", "Min", "(min(1, 2))", "min(1, 2)" },
		{ TEXT("(a < b) && (c >= 1)"), "a:in:real/double, b:in:real/double, c:in:real/double, ReturnValue:out:bool",
			"Less_DoubleDouble GreaterEqual_DoubleDouble BooleanAND", "((a < b) && (c >= 1))", "(a < b) && (c >= 1)" },
		{ TEXT("x % 3"), "x:in:real/double, ReturnValue:out:real/double", "Percent_FloatFloat", "(x % 3)", "x % 3" },
		{ TEXT("pow(x, 2)"), "x:in:real/double, ReturnValue:out:real/double", "MultiplyMultiply_FloatFloat", "(pow(x, 2))", "pow(x, 2)" },
		{ TEXT("vectorlength(vec(x, y, 0))"), "x:in:real/double, y:in:real/double, ReturnValue:out:real/double", "MakeVector VSize",
			"(vectorlength((vec(x, y, 0))))", "vectorlength((vec(x, y, 0)))" },
		{ TEXT("x * x"), "x:in:real/double, ReturnValue:out:real/double", "Multiply_DoubleDouble", "(x * x)", "x * x" },
		{ TEXT("true || FALSE"), "ReturnValue:out:bool", "BooleanOR", "(TRUE || FALSE)", "TRUE || FALSE" },
		{ TEXT("x"), "x:in:real/double, ReturnValue:out:real/double", "", "x", "x" },
		// An x after digits reads as the mark of a hexadecimal number, so "2x" is the number 2.
		{ TEXT("2x"), "ReturnValue:out:int", "", "2", "2" },
		{ TEXT("0x1F + 1.5f"), "ReturnValue:out:real/double", "Add_DoubleDouble", "(31 + 1.500000)", "31 + 1.500000" },
		{ TEXT("x /* half */ / 2 // rest"), "x:in:real/double, ReturnValue:out:real/double", "Divide_DoubleDouble", "(x / 2)", "x / 2" },
	};

	struct FErrorCase
	{
		const TCHAR* Expression;
		const char* Error;
	};

	// What the node reports, line by line, for expressions it cannot turn into a graph.
	const FErrorCase ErrorCases[] = {
		{ TEXT("(x + 1"), "PARSE ERROR in '(x + 1': Missing ')' in group closing" },
		{ TEXT("sin(x"), "PARSE ERROR in 'sin(x': Missing ')' in 'sin' closing" },
		{ TEXT("5var"), "PARSE ERROR in '5var': Unhandled trailing 'var' at the end of the expression" },
		{ TEXT("x = 1"), "PARSE ERROR in 'x = 1': Unhandled trailing '= 1' at the end of the expression" },
		{ TEXT("x /* open"), "PARSE ERROR in 'x /* open': No end to a comment by the end of the expression" },
		{ TEXT("{1234"), "PARSE ERROR in '{1234': Missing closing bracket: }" },
		{ TEXT("\"abc"), "PARSE ERROR in '\"abc': Unterminated quoted string (abc)" },
		{ TEXT("foo(x)"), "Unknown function 'foo' in the expression: 'foo(x)'" },
		{ TEXT("vsize(v)"), "Unknown function 'vsize' in the expression: 'vsize(v)'" },
		{ TEXT("sin(x, y)"), "Cannot find a 'sin' function that takes the supplied param types, for expression: 'sin(x, y)'" },
		{ TEXT("x && y"), "Cannot find a '&&' function that takes the supplied param types, for expression: 'x && y'" },
		{ TEXT("-x"), "Currently, unary operators (-x) are prohibited in expressions: '-x'" },
		{ TEXT("a ? b : c"), "Currently, conditional operators (a ? b : c) are prohibited in expressions: 'a ? b : c'" },
		{ TEXT("x +"), "Unhandled token '' in expression: 'x +'\nFailed to generate argument #2 for the '+' function, in the expression: 'x +'" },
		{ TEXT("x + )"), "Unhandled token ')' in expression: 'x + )'\nFailed to generate argument #2 for the '+' function, in the expression: 'x + )'" },
	};
}

TEST_F(MathExpression, BuildsTheGraphTheExpressionDescribes)
{
	for (const FExpressionCase& Case : ExpressionCases)
	{
		SCOPED_TRACE(Str(FString(Case.Expression)));
		UK2Node_MathExpression* Node = PlaceExpression(Case.Expression);
		EXPECT_FALSE(Node->bHasCompilerMessage) << Str(Node->ErrorMsg);
		EXPECT_EQ(DescribePins(Node), Case.Pins);
		EXPECT_EQ(InnerFunctions(Node), Case.Functions);
		EXPECT_EQ(Str(Node->Expression), Case.Stored);
		EXPECT_EQ(Str(Node->GetNodeTitle(ENodeTitleType::ListView)), Case.Title);
		EXPECT_EQ(Str(Node->GetNodeTitle(ENodeTitleType::FullTitle)), std::string(Case.Title) + "\nMath Expression");
		// Reconstructing (as a compile does) rebuilds the same graph from the stored expression.
		Node->ReconstructNode();
		EXPECT_EQ(DescribePins(Node), Case.Pins);
		EXPECT_EQ(InnerFunctions(Node), Case.Functions);
		EXPECT_EQ(Str(Node->Expression), Case.Stored);
		// The entry and exit tunnels mirror the node: every pin outside has its twin inside.
		for (const UEdGraphPin* Pin : Node->Pins)
		{
			const UK2Node_Tunnel* Tunnel = Pin->Direction == EGPD_Input ? Node->GetEntryNode() : Node->GetExitNode();
			EXPECT_NE(Tunnel->FindPin(Pin->PinName, UEdGraphPin::GetComplementaryDirection(Pin->Direction)), nullptr) << Str(Pin->PinName);
		}
	}
}

TEST_F(MathExpression, ReportsWhatIsWrongWithAnExpression)
{
	for (const FErrorCase& Case : ErrorCases)
	{
		SCOPED_TRACE(Str(FString(Case.Expression)));
		UK2Node_MathExpression* Node = PlaceExpression(Case.Expression);
		EXPECT_TRUE(Node->bHasCompilerMessage);
		EXPECT_EQ(Node->ErrorType, int32(EMessageSeverity::Error));
		EXPECT_EQ(Str(Node->ErrorMsg), Case.Error);
		// A refused expression keeps what was typed, and has no result.
		EXPECT_EQ(Str(Node->Expression), Str(FString(Case.Expression)));
		EXPECT_EQ(Node->FindPin(UEdGraphSchema_K2::PN_ReturnValue), nullptr);
		EXPECT_EQ(Str(Node->GetNodeTitle(ENodeTitleType::ListView)), Str(FString(Case.Expression)));
	}
}

TEST_F(MathExpression, RefusesExpressionsNestedTooDeeply)
{
	auto Repeat = [](const TCHAR* Part, int32 Count)
	{
		FString Result;
		for (int32 Index = 0; Index < Count; ++Index)
		{
			Result += Part;
		}
		return Result;
	};
	const FString TooDeep[] = {
		Repeat(TEXT("("), 300) + TEXT("x") + Repeat(TEXT(")"), 300),
		TEXT("x") + Repeat(TEXT(" + x"), 500),
		Repeat(TEXT("- "), 300) + TEXT("x"),
		Repeat(TEXT("sin("), 300) + TEXT("x") + Repeat(TEXT(")"), 300),
	};
	for (const FString& Expression : TooDeep)
	{
		SCOPED_TRACE(Str(Expression.Left(12)));
		UK2Node_MathExpression* Node = PlaceExpression(*Expression);
		EXPECT_EQ(Str(Node->ErrorMsg), "PARSE ERROR in '" + Str(Expression) + "': The expression is nested too deeply");
		EXPECT_EQ(Node->BoundGraph->Nodes.Num(), 2);
	}
	// Deep but within reach.
	UK2Node_MathExpression* Nested = PlaceExpression(*(Repeat(TEXT("("), 60) + TEXT("x + 1") + Repeat(TEXT(")"), 60)));
	EXPECT_FALSE(Nested->bHasCompilerMessage) << Str(Nested->ErrorMsg);
	EXPECT_EQ(Str(Nested->GetNodeTitle(ENodeTitleType::ListView)), "x + 1");
}

TEST_F(MathExpression, WiresOperandsAndTypesLiteralsIntoPins)
{
	UK2Node_MathExpression* Node = PlaceExpression(TEXT("sin(x) * 2 + y"));
	UK2Node_CallFunction* Sin = Cast<UK2Node_CallFunction>(Node->BoundGraph->Nodes[2]);
	UK2Node_CallFunction* Multiply = Cast<UK2Node_CallFunction>(Node->BoundGraph->Nodes[3]);
	UK2Node_CallFunction* Add = Cast<UK2Node_CallFunction>(Node->BoundGraph->Nodes[4]);
	ASSERT_TRUE(Sin && Multiply && Add);
	const UK2Node_Tunnel* Entry = Node->GetEntryNode();
	const UK2Node_Tunnel* Exit = Node->GetExitNode();

	auto LinkedTo = [](const UEdGraphPin* Pin, const UEdGraphPin* Other) { return Pin && Other && Pin->LinkedTo.Num() == 1 && Pin->LinkedTo[0] == Other; };
	EXPECT_TRUE(LinkedTo(Sin->FindPin(TEXT("A")), Entry->FindPin(TEXT("x"))));
	EXPECT_TRUE(LinkedTo(Multiply->FindPin(TEXT("A")), Sin->GetReturnValuePin()));
	EXPECT_TRUE(LinkedTo(Add->FindPin(TEXT("A")), Multiply->GetReturnValuePin()));
	EXPECT_TRUE(LinkedTo(Add->FindPin(TEXT("B")), Entry->FindPin(TEXT("y"))));
	EXPECT_TRUE(LinkedTo(Exit->FindPin(UEdGraphSchema_K2::PN_ReturnValue), Add->GetReturnValuePin()));

	// The literal is a value on the pin it feeds, not a node.
	const UEdGraphPin* Two = Multiply->FindPin(TEXT("B"));
	EXPECT_EQ(Two->LinkedTo.Num(), 0);
	EXPECT_DOUBLE_EQ(FCString::Atod(*Two->DefaultValue), 2.0);
	EXPECT_TRUE(Node->IsNodePure());
}

TEST_F(MathExpression, LaysOperationsOutInColumnsByDepth)
{
	// One operation: inputs in the first column (two rows around the middle), the call in the next, the result after.
	UK2Node_MathExpression* Node = PlaceExpression(TEXT("x + 1"));
	const UEdGraphNode* Add = Node->BoundGraph->Nodes[2];
	EXPECT_EQ(std::make_pair(Node->GetEntryNode()->NodePosX, Node->GetEntryNode()->NodePosY), std::make_pair(0, -70));
	EXPECT_EQ(std::make_pair(Add->NodePosX, Add->NodePosY), std::make_pair(240, 0));
	EXPECT_EQ(std::make_pair(Node->GetExitNode()->NodePosX, Node->GetExitNode()->NodePosY), std::make_pair(480, 0));
}

TEST_F(MathExpression, ANewExpressionReplacesTheGraphAndKeepsReusedInputs)
{
	UK2Node_MathExpression* Node = PlaceExpression(TEXT("a * b"));
	UEdGraphPin* OuterA = Node->FindPin(TEXT("a"));
	// The user retypes input a; an expression that still reads a keeps it as it is.
	UK2Node_Tunnel* Entry = Node->GetEntryNode();
	Entry->UserDefinedPins[0]->PinType.PinCategory = UEdGraphSchema_K2::PC_Int;
	Entry->UserDefinedPins[0]->PinType.PinSubCategory = NAME_None;
	Entry->FindPin(TEXT("a"))->PinType = Entry->UserDefinedPins[0]->PinType;
	ASSERT_NE(OuterA, nullptr);

	Node->OnRenameNode(TEXT("c + a"));
	EXPECT_FALSE(Node->bHasCompilerMessage) << Str(Node->ErrorMsg);
	// b is no longer read and goes; a stays first with its type; c is new.
	EXPECT_EQ(DescribePins(Node), "a:in:int, c:in:real/double, ReturnValue:out:real/double");
	// The int input reaches the double parameter through the conversion the schema inserts.
	EXPECT_EQ(InnerFunctions(Node), "Add_DoubleDouble Conv_IntToDouble");

	// An expression that parses but cannot be built still drops unread inputs, and has no result.
	Node->OnRenameNode(TEXT("c +"));
	EXPECT_TRUE(Node->bHasCompilerMessage);
	EXPECT_EQ(DescribePins(Node), "c:in:real/double");
	Node->OnRenameNode(TEXT("z"));
	EXPECT_FALSE(Node->bHasCompilerMessage);
	EXPECT_EQ(Str(Node->ErrorMsg), "");
	EXPECT_EQ(DescribePins(Node), "z:in:real/double, ReturnValue:out:real/double");
	EXPECT_FALSE(Node->IsNodePure());
}

TEST_F(MathExpression, TitlesTheMenuEntryAndKeepsTheOuterLinks)
{
	UK2Node_MathExpression* Template = NewObject<UK2Node_MathExpression>(Graph);
	EXPECT_EQ(Str(Template->GetNodeTitle(ENodeTitleType::MenuTitle)), "Add Math Expression...");

	UK2Node_MathExpression* Node = PlaceExpression(TEXT("x + 1"));
	EXPECT_EQ(Str(Node->GetNodeTitle(ENodeTitleType::MenuTitle)), "x + 1");
	EXPECT_EQ(Str(Node->BoundGraph->GetName()), "MathExpression");
	EXPECT_TRUE(Node->bMadeAfterRotChange);

	// Links from outside survive a new expression that keeps the pins.
	UK2Node_MathExpression* Source = PlaceExpression(TEXT("y * 2"));
	UK2Node_MathExpression* Sink = PlaceExpression(TEXT("v - 1"));
	ASSERT_TRUE(Connect(Source->FindPin(UEdGraphSchema_K2::PN_ReturnValue), Node->FindPin(TEXT("x"))));
	ASSERT_TRUE(Connect(Node->FindPin(UEdGraphSchema_K2::PN_ReturnValue), Sink->FindPin(TEXT("v"))));
	Node->OnRenameNode(TEXT("x * 3"));
	EXPECT_EQ(Node->FindPin(TEXT("x"))->LinkedTo.Num(), 1);
	EXPECT_EQ(Node->FindPin(UEdGraphSchema_K2::PN_ReturnValue)->LinkedTo.Num(), 1);
	EXPECT_EQ(Sink->FindPin(TEXT("v"))->LinkedTo.Num(), 1);
}

TEST_F(MathExpression, DeletingTheNodeTakesItsGraphAlong)
{
	UK2Node_MathExpression* Kept = PlaceExpression(TEXT("a + b"));
	UK2Node_MathExpression* Deleted = PlaceExpression(TEXT("c * 2"));
	ASSERT_EQ(Graph->SubGraphs.Num(), 2);
	UEdGraph* DeletedGraph = Deleted->BoundGraph;
	Deleted->DestroyNode();
	EXPECT_EQ(Graph->SubGraphs.Num(), 1);
	EXPECT_EQ(Graph->SubGraphs[0], Kept->BoundGraph);
	EXPECT_FALSE(Graph->Nodes.Contains(Deleted));
	TArray<UEdGraph*> AllGraphs;
	Blueprint->GetAllGraphs(AllGraphs);
	EXPECT_FALSE(AllGraphs.Contains(DeletedGraph));
}

TEST_F(MathExpression, SavesAndLoadsWithItsGraph)
{
	UK2Node_MathExpression* Node = PlaceExpression(TEXT("sin(x) * 2 + y"));
	Node->NodePosX = 32;
	const FGuid Guid = Node->NodeGuid;

	FString Saved;
	ASSERT_TRUE(SaveAndReload(&Saved));
	UK2Node_MathExpression* Loaded = FindNode<UK2Node_MathExpression>();
	ASSERT_NE(Loaded, nullptr);
	EXPECT_EQ(Loaded->NodeGuid, Guid);
	EXPECT_EQ(Str(Loaded->Expression), "(((sin(x)) * 2) + y)");
	EXPECT_EQ(Str(Loaded->GetNodeTitle(ENodeTitleType::FullTitle)), "((sin(x)) * 2) + y\nMath Expression");
	EXPECT_EQ(DescribePins(Loaded), "x:in:real/double, y:in:real/double, ReturnValue:out:real/double");
	ASSERT_NE(Loaded->BoundGraph, nullptr);
	EXPECT_EQ(InnerFunctions(Loaded), "Sin Multiply_DoubleDouble Add_DoubleDouble");
	EXPECT_EQ(Loaded->GetEntryNode()->FindPin(TEXT("x"))->LinkedTo.Num(), 1);
	EXPECT_EQ(SaveBytes(), Saved);
}

TEST_F(MathExpression, LoadingAnOlderNodeReordersRotatorArguments)
{
	// Made before rotators took (Roll, Pitch, Yaw): the first rotator call is rewritten once, on load.
	UK2Node_MathExpression* Node = Place<UK2Node_MathExpression>();
	Node->Expression = TEXT("makerot(p, y, r) + rot(a, b, c)");
	Node->bMadeAfterRotChange = false;
	ASSERT_TRUE(SaveAndReload());
	UK2Node_MathExpression* Loaded = FindNode<UK2Node_MathExpression>();
	ASSERT_NE(Loaded, nullptr);
	EXPECT_TRUE(Loaded->bMadeAfterRotChange);
	EXPECT_EQ(Str(Loaded->Expression), "((MakeRotator(r, p, y)) + (rot(a, b, c)))");

	Loaded->Expression = TEXT("rotator(1, 2, 3)");
	ASSERT_TRUE(SaveAndReload());
	EXPECT_EQ(Str(FindNode<UK2Node_MathExpression>()->Expression), "rotator(1, 2, 3)");
}
