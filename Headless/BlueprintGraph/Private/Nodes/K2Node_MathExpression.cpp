#include "K2Node_MathExpression.h"

#include "MathExpression/MathExpressionParser.h"
#include "MathExpression/MathGraphGenerator.h"

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "K2Node_CallFunction.h"
#include "K2Node_Tunnel.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Templates/UnrealTemplate.h"
#include "UObject/UnrealType.h"

#define LOCTEXT_NAMESPACE "K2Node"

IMPLEMENT_CLASS(UK2Node_MathExpression,
	UE_NATIVE_PROPERTY(FStrProperty, Expression, CPF_Edit);
	UE_NATIVE_PROPERTY(FBoolProperty, bMadeAfterRotChange, CPF_None, 0, (uint32)sizeof(bool), true);
)

namespace
{
	using namespace UE::BlueprintGraph::MathExpression;

	const TCHAR* const BoundGraphName = TEXT("MathExpression");

	/** The expression as shown: variables bound by guid show their current names. */
	FString MakeDisplayExpression(const UK2Node_MathExpression& Node, const FExpressionNode& Root)
	{
		return SanitizeDisplayExpression(Root.ToDisplayString([&Node](const FString& GuidText)
		{
			FGuid VariableGuid;
			if (!FGuid::Parse(GuidText, VariableGuid))
			{
				return GuidText;
			}
			return FindVariableNameByGuid(Node, VariableGuid).ToString();
		}));
	}

	/**
	 * Rotators used to be made from (Pitch, Yaw, Roll) in expressions and are now made from (Roll, Pitch, Yaw):
	 * the arguments of older rotator calls are moved to keep their meaning, and "makerot" takes its new name.
	 * As in the editor, the pass stops after the first complete call it meets.
	 */
	void FixOldRotatorCalls(FExpressionNode& Root)
	{
		Root.Walk([](FExpressionNode& Expression, EVisitPhase Phase)
		{
			if (Expression.Kind != EExpressionKind::Call)
			{
				return true;
			}
			if (Phase != EVisitPhase::Pre)
			{
				return false;
			}
			const bool bIsMakeRot = Expression.Operator == TEXT("makerot");
			if (bIsMakeRot || Expression.Operator == TEXT("rotator") || Expression.Operator == TEXT("rot"))
			{
				TArray<TSharedRef<FExpressionNode>>& Arguments = Expression.Children[0]->Children;
				if (Arguments.Num() == 3)
				{
					Arguments = { Arguments[2], Arguments[0], Arguments[1] };
				}
				if (bIsMakeRot)
				{
					Expression.Operator = TEXT("MakeRotator");
				}
			}
			return true;
		});
	}
}

UK2Node_MathExpression::UK2Node_MathExpression()
{
	// The node's name is its formula: renaming it is how the formula is written.
	bCanRenameNode = true;
}

void UK2Node_MathExpression::PostPlacedNewNode()
{
	bMadeAfterRotChange = true;
	Super::PostPlacedNewNode();
	if (!BoundGraph || BoundGraph->GetOuter() != this)
	{
		CreateBoundGraph(BoundGraphName);
	}
}

void UK2Node_MathExpression::PostLoad()
{
	Super::PostLoad();
	if (!bMadeAfterRotChange)
	{
		bMadeAfterRotChange = true;
		if (Expression.Contains(TEXT("Rot")))
		{
			FParseResult Parsed = ParseExpression(Expression);
			if (Parsed.IsValid())
			{
				FixOldRotatorCalls(*Parsed.Root);
				Expression = Parsed.Root->ToString();
			}
		}
	}
	bDisplayExpressionCached = false;
}

void UK2Node_MathExpression::DestroyNode()
{
	UEdGraph* Bound = BoundGraph;
	UEdGraph* ParentGraph = GetGraph();
	Super::DestroyNode();
	// A graph the node owns would otherwise stay listed under its parent and be compiled without its node.
	if (Bound && Bound->GetOuter() == this)
	{
		if (ParentGraph)
		{
			ParentGraph->SubGraphs.Remove(Bound);
		}
		Bound->MarkAsGarbage();
	}
}

void UK2Node_MathExpression::OnRenameNode(const FString& NewName)
{
	RebuildExpression(NewName);
}

void UK2Node_MathExpression::ClearExpression()
{
	bHasCompilerMessage = false;
	ErrorMsg.Empty();
	ErrorType = EMessageSeverity::Info;

	// The generated nodes go; the tunnels stay, and so do the entry's inputs (the user may have retyped one).
	if (BoundGraph)
	{
		const TArray<TObjectPtr<UEdGraphNode>> Nodes = BoundGraph->Nodes;
		for (UEdGraphNode* Generated : Nodes)
		{
			if (Generated && Generated->GetClass() != UK2Node_Tunnel::StaticClass())
			{
				Generated->DestroyNode();
			}
		}
	}
	if (UK2Node_Tunnel* Exit = GetExitNode())
	{
		for (int32 Index = Exit->UserDefinedPins.Num() - 1; Index >= 0; --Index)
		{
			Exit->RemoveUserDefinedPin(Exit->UserDefinedPins[Index]);
		}
	}

	CachedMessageLog = MakeShared<FCompilerResultsLog>(false);
	CachedMessageLog->bSilentMode = true;
	Expression.Empty();
}

void UK2Node_MathExpression::RebuildExpression(FString NewExpression)
{
	// Taken by value: the caller may pass Expression itself, which clearing empties.
	if (bRebuilding)
	{
		return;
	}
	TGuardValue<bool> Guard(bRebuilding, true);

	ClearExpression();
	Expression = NewExpression;
	// Until the expression has been turned into a graph, it is shown as typed.
	CachedDisplayExpression = Expression;
	bDisplayExpressionCached = true;

	if (!NewExpression.IsEmpty())
	{
		FParseResult Parsed = ParseExpression(NewExpression);
		if (Parsed.IsValid())
		{
			if (!BoundGraph && GetGraph())
			{
				CreateBoundGraph(BoundGraphName);
			}
			TArray<FName> UsedInputs;
			if (!BoundGraph || !GenerateGraph(*this, *Parsed.Root, *CachedMessageLog, UsedInputs))
			{
				if (CachedMessageLog->NumErrors == 0)
				{
					CachedMessageLog->Error(TEXT("Failed to generate full expression graph for: '@@'"), this);
				}
			}
			else
			{
				Expression = Parsed.Root->ToString();
				CachedDisplayExpression = MakeDisplayExpression(*this, *Parsed.Root);
			}

			// Inputs of an earlier expression that this one does not read go now (not before: they were reusable).
			if (UK2Node_Tunnel* Entry = GetEntryNode())
			{
				for (int32 Index = Entry->UserDefinedPins.Num() - 1; Index >= 0; --Index)
				{
					if (!UsedInputs.Contains(Entry->UserDefinedPins[Index]->PinName))
					{
						Entry->RemoveUserDefinedPin(Entry->UserDefinedPins[Index]);
					}
				}
			}
		}
		else
		{
			CachedMessageLog->Error(*FString::Printf(TEXT("PARSE ERROR in '@@': %s"), *Parsed.Error), this);
		}
	}

	if (BoundGraph)
	{
		BoundGraph->NotifyGraphChanged();
	}
	ReconstructNode();
	if (UBlueprint* Blueprint = GetBlueprint())
	{
		Blueprint->Status = BS_Dirty;
	}
}

void UK2Node_MathExpression::ReconstructNode()
{
	// While its package is still being read, the bound graph's links are not resolved yet: the graph as saved stands.
	const bool bBeingLoaded = HasAnyFlags(RF_WasLoaded) && !HasAnyFlags(RF_LoadCompleted);
	if (!bRebuilding && !bBeingLoaded)
	{
		// Rebuilding ends by reconstructing the pins, with the graph the expression makes now.
		RebuildExpression(Expression);
		return;
	}
	// The expression's own error outlives the pin rebuild: it is cleared only by the next expression.
	const bool bHadMessage = bHasCompilerMessage;
	const int32 OldErrorType = ErrorType;
	const FString OldErrorMsg = ErrorMsg;
	Super::ReconstructNode();
	bHasCompilerMessage = bHadMessage;
	ErrorType = OldErrorType;
	ErrorMsg = OldErrorMsg;
}

bool UK2Node_MathExpression::ShouldExpandInsteadCompile() const
{
	constexpr int32 TunnelCount = 2;
	if (!BoundGraph || BoundGraph->Nodes.Num() <= TunnelCount)
	{
		return true;
	}
	if (BoundGraph->Nodes.Num() == TunnelCount + 1)
	{
		for (const UEdGraphNode* Inner : BoundGraph->Nodes)
		{
			if (Inner && Inner != GetEntryNode() && Inner != GetExitNode())
			{
				return !Inner->IsA<UK2Node_CallFunction>();
			}
		}
	}
	return false;
}

bool UK2Node_MathExpression::IsNodePure() const
{
	return !ShouldExpandInsteadCompile();
}

FString UK2Node_MathExpression::GetDisplayExpression() const
{
	if (!bDisplayExpressionCached)
	{
		if (Expression.IsEmpty())
		{
			return FString();
		}
		const FParseResult Parsed = ParseExpression(Expression);
		CachedDisplayExpression = Parsed.IsValid() ? MakeDisplayExpression(*this, *Parsed.Root) : Expression;
		bDisplayExpressionCached = true;
	}
	return CachedDisplayExpression;
}

FText UK2Node_MathExpression::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	if (Expression.IsEmpty() && TitleType == ENodeTitleType::MenuTitle)
	{
		return LOCTEXT("AddMathExprMenuOption", "Add Math Expression...");
	}
	const FText Display = FText::FromString(GetDisplayExpression());
	if (TitleType != ENodeTitleType::FullTitle)
	{
		return Display;
	}
	return FText::Format(LOCTEXT("MathExpressionSecondTitleLine", "{0}\nMath Expression"), Display);
}

FText UK2Node_MathExpression::GetTooltipText() const
{
	return LOCTEXT("MathExpressionTooltip", "Computes the formula in its title. Names that are not variables of the Blueprint become inputs of the node.");
}

FText UK2Node_MathExpression::GetMenuCategory() const
{
	// Listed at the top of the menu, beside no category.
	return Super::GetMenuCategory();
}

FText UK2Node_MathExpression::GetKeywords() const
{
	return Super::GetKeywords();
}

void UK2Node_MathExpression::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	Super::ValidateNodeDuringCompilation(MessageLog);
	if (!CachedMessageLog.IsValid())
	{
		return;
	}
	if (bHasCompilerMessage)
	{
		// The rebuild that ran for this compile already marked the node: the messages are only added.
		for (const TSharedRef<FTokenizedMessage>& Message : CachedMessageLog->Messages)
		{
			if (!MessageLog.Messages.Contains(Message))
			{
				MessageLog.AddTokenizedMessage(Message);
			}
		}
	}
	else
	{
		MessageLog.Append(*CachedMessageLog, true);
	}
}

#undef LOCTEXT_NAMESPACE
