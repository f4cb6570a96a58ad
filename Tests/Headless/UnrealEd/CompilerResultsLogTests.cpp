#include "Headless/UnrealEd/EditorTestUtils.h"

#include "K2Node.h"

using namespace EditorTest;

/** A node with a fixed title and one pin, to be named in messages. */
class UCompilerLogTestNode : public UK2Node
	{
		DECLARE_CLASS(UCompilerLogTestNode, UK2Node, CLASS_None, CASTCLASS_None, TEXT("/Script/UnrealEdTests"), NO_API)
	public:
		virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override
		{
			return FText::FromString(TitleType == ENodeTitleType::ListView ? TEXT("Print String") : TEXT("Print String\nTarget is Kismet System Library"));
		}
		virtual void AllocateDefaultPins() override
		{
			UEdGraphPin* Pin = CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_String, TEXT("InString"));
			Pin->PinFriendlyName = FText::FromString(TEXT("In String"));
		}
};
IMPLEMENT_CLASS(UCompilerLogTestNode)

namespace
{
	UCompilerLogTestNode* MakeNode()
	{
		UPackage* Package = CreatePackage(TEXT("/Game/Tests/CompilerLog"));
		UEdGraph* Graph = NewObject<UEdGraph>(Package, NAME_None);
		UCompilerLogTestNode* Node = NewObject<UCompilerLogTestNode>(Graph);
		Node->AllocateDefaultPins();
		return Node;
	}
}

TEST(CompilerResultsLog, ReplacesEachMarkerWithTheNextArgumentInOrder)
{
	UCompilerLogTestNode* Node = MakeNode();
	UEdGraphPin* Pin = Node->Pins[0];
	struct FCase
	{
		const char* Name;
		TFunction<TSharedRef<FTokenizedMessage>(FCompilerResultsLog&)> Log;
		const char* Expected;
	};
	const FCase Cases[] = {
		{ "node", [&](FCompilerResultsLog& L) { return L.Error(TEXT("Problem in @@"), Node); }, "Problem in Print String" },
		{ "pin then node", [&](FCompilerResultsLog& L) { return L.Error(TEXT("Pin @@ must be linked to another node (in @@)"), Pin, Node); },
			"Pin In String must be linked to another node (in Print String)" },
		{ "marker first and last", [&](FCompilerResultsLog& L) { return L.Error(TEXT("@@ and @@"), Node, Pin); }, "Print String and In String" },
		{ "text argument", [&](FCompilerResultsLog& L) { return L.Warning(TEXT("Value @@ is odd"), TEXT("7")); }, "Value 7 is odd" },
		{ "more markers than arguments", [&](FCompilerResultsLog& L) { return L.Error(TEXT("@@ vs @@"), Node); }, "Print String vs @@" },
		{ "more arguments than markers", [&](FCompilerResultsLog& L) { return L.Error(TEXT("plain"), Node, Pin); }, "plain" },
		{ "no arguments", [&](FCompilerResultsLog& L) { return L.Note(TEXT("just @@ text")); }, "just @@ text" },
		{ "null object", [&](FCompilerResultsLog& L) { return L.Error(TEXT("see @@"), static_cast<UObject*>(nullptr)); }, "see <None>" },
	};
	for (const FCase& Case : Cases)
	{
		FCompilerResultsLog Log;
		Log.bAnnotateMentionedNodes = false;
		const TSharedRef<FTokenizedMessage> Message = Case.Log(Log);
		EXPECT_EQ(U8(Message->ToText()), Case.Expected) << Case.Name;
		ASSERT_EQ(Log.Messages.Num(), 1) << Case.Name;
	}
}

TEST(CompilerResultsLog, TokensLeadBackToTheNodeAndPin)
{
	UCompilerLogTestNode* Node = MakeNode();
	UEdGraphPin* Pin = Node->Pins[0];
	FCompilerResultsLog Log;
	const TSharedRef<FTokenizedMessage> Message = Log.Error(TEXT("Pin @@ of @@"), Pin, Node);
	const TArray<TSharedRef<IMessageToken>>& Tokens = Message->GetMessageTokens();
	ASSERT_EQ(Tokens.Num(), 4);
	EXPECT_EQ(Tokens[0]->GetType(), EMessageToken::Text);
	ASSERT_EQ(Tokens[1]->GetType(), EMessageToken::EdGraph);
	const FEdGraphToken& PinToken = static_cast<const FEdGraphToken&>(Tokens[1].Get());
	EXPECT_EQ(PinToken.GetPin(), Pin);
	EXPECT_EQ(PinToken.GetGraphObject(), Node);
	const FEdGraphToken& NodeToken = static_cast<const FEdGraphToken&>(Tokens[3].Get());
	EXPECT_EQ(NodeToken.GetPin(), nullptr);
	EXPECT_EQ(NodeToken.GetGraphObject(), Node);
	EXPECT_EQ(Message->GetSeverity(), EMessageSeverity::Error);

	// A pin freed by its node is no longer reachable through the token.
	Node->RemovePin(Pin);
	EXPECT_EQ(PinToken.GetPin(), nullptr);
}

TEST(CompilerResultsLog, CountsBySeverityAndMarksNodesWithTheirWorstMessage)
{
	UCompilerLogTestNode* Node = MakeNode();
	FCompilerResultsLog Log;
	Log.Note(TEXT("note on @@"), Node);
	EXPECT_EQ(Log.NumErrors, 0);
	EXPECT_EQ(Log.NumWarnings, 0);
	EXPECT_TRUE(Node->bHasCompilerMessage);
	EXPECT_EQ(Node->ErrorType, int32(EMessageSeverity::Info));

	Log.Warning(TEXT("warning on @@"), Node);
	EXPECT_EQ(Log.NumWarnings, 1);
	EXPECT_EQ(Node->ErrorType, int32(EMessageSeverity::Warning));
	EXPECT_EQ(U8(Node->ErrorMsg), "note on Print String\nwarning on Print String");

	Log.Error(TEXT("error on @@"), Node);
	Log.Warning(TEXT("later warning on @@"), Node);
	EXPECT_EQ(Log.NumErrors, 1);
	EXPECT_EQ(Log.NumWarnings, 2);
	EXPECT_EQ(Node->ErrorType, int32(EMessageSeverity::Error));
	// A lesser message does not join a node that shows an error.
	EXPECT_EQ(U8(Node->ErrorMsg), "note on Print String\nwarning on Print String\nerror on Print String");
	EXPECT_TRUE(Log.AnnotatedNodes.Contains(TWeakObjectPtr<UEdGraphNode>(Node)));
	EXPECT_EQ(Messages(Log), "note on Print String\nwarning on Print String\nerror on Print String\nlater warning on Print String\n");
}

TEST(CompilerResultsLog, PotentialMessagesCountOnlyOnceCommitted)
{
	UCompilerLogTestNode* Node = MakeNode();
	FCompilerResultsLog Log;
	Log.StorePotentialError(Node, TEXT("maybe @@"), Node);
	Log.StorePotentialWarning(Node, TEXT("perhaps"));
	EXPECT_EQ(Log.Messages.Num(), 0);
	EXPECT_EQ(Log.NumErrors, 0);
	EXPECT_TRUE(Log.CommitPotentialMessages(Node));
	EXPECT_EQ(Log.NumErrors, 1);
	EXPECT_EQ(Log.NumWarnings, 1);
	EXPECT_EQ(Messages(Log), "maybe Print String\nperhaps\n");
	EXPECT_FALSE(Log.CommitPotentialMessages(Node));
}

TEST(CompilerResultsLog, AppendTakesOnlyMessagesNotAlreadyPresent)
{
	UCompilerLogTestNode* Node = MakeNode();
	FCompilerResultsLog First;
	First.Error(TEXT("broken @@"), Node);
	First.Warning(TEXT("odd"));
	FCompilerResultsLog Second;
	Second.Append(First);
	Second.Append(First);
	EXPECT_EQ(Second.Messages.Num(), 2);
	EXPECT_EQ(Second.NumErrors, 1);
	EXPECT_EQ(Second.NumWarnings, 1);

	FCompilerResultsLog Added;
	Added.AddTokenizedMessage(FTokenizedMessage::Create(EMessageSeverity::PerformanceWarning, FText::FromString(TEXT("slow"))));
	EXPECT_EQ(Added.NumWarnings, 1);
	EXPECT_EQ(Messages(Added), "slow\n");
}

TEST(CompilerResultsLog, MapsIntermediateObjectsBackToTheirSource)
{
	UCompilerLogTestNode* Source = MakeNode();
	UCompilerLogTestNode* Copy = MakeNode();
	UCompilerLogTestNode* CopyOfCopy = MakeNode();
	FCompilerResultsLog Log;
	Log.NotifyIntermediateObjectCreation(Copy, Source);
	Log.NotifyIntermediateObjectCreation(CopyOfCopy, Copy);
	EXPECT_EQ(Log.FindSourceObject(CopyOfCopy), Source);
	// A pin of a copy leads to the source's pin with the same id.
	CopyOfCopy->Pins[0]->PinId = Source->Pins[0]->PinId;
	EXPECT_EQ(Log.FindSourcePin(CopyOfCopy->Pins[0]), Source->Pins[0]);
	Log.Error(TEXT("in @@"), CopyOfCopy);
	EXPECT_TRUE(Source->bHasCompilerMessage);
	EXPECT_FALSE(CopyOfCopy->bHasCompilerMessage);
}
