#pragma once

#include "CoreMinimal.h"
#include "K2Node_Composite.h"
#include "Templates/SharedPointer.h"

#ifndef BLUEPRINTGRAPH_API
#define BLUEPRINTGRAPH_API
#endif
#define UE_API BLUEPRINTGRAPH_API

class FCompilerResultsLog;

/**
 * A collapsed graph written as a formula. Renaming the node sets its expression ("sin(x) * 2 + y"), which is parsed
 * into calls of the math library wired between the bound graph's entry (one input per variable, in the order the
 * variables first appear) and its exit (ReturnValue). An expression that does not parse or does not resolve leaves
 * the node with an error message (bHasCompilerMessage, ErrorType, ErrorMsg) instead of a graph.
 */
class UK2Node_MathExpression : public UK2Node_Composite
{
	DECLARE_CLASS(UK2Node_MathExpression, UK2Node_Composite, CLASS_None, CASTCLASS_None, TEXT("/Script/BlueprintGraph"), UE_API)

public:
	UE_API UK2Node_MathExpression();

	/** The expression: as typed until it builds, then fully parenthesised, with Blueprint variables kept as "{guid}". */
	FString Expression;

	/** Set on nodes made once rotators were built with (Roll, Pitch, Yaw) in expressions; older nodes kept (Pitch, Yaw, Roll). */
	bool bMadeAfterRotChange = false;

	//~ UEdGraphNode
	/** Takes NewName as the new expression: the bound graph is rebuilt from it, or the node reports why it cannot be. */
	UE_API virtual void OnRenameNode(const FString& NewName) override;
	UE_API virtual FText GetNodeTitle(ENodeTitleType::Type TitleType) const override;
	UE_API virtual FText GetTooltipText() const override;
	UE_API virtual void PostPlacedNewNode() override;
	UE_API virtual void ReconstructNode() override;
	UE_API virtual void PostLoad() override;
	/** The bound graph goes with the node. */
	UE_API virtual void DestroyNode() override;

	//~ UK2Node
	/** Pure when it computes something; a lone variable or literal is simply passed through. */
	UE_API virtual bool IsNodePure() const override;
	UE_API virtual FText GetMenuCategory() const override;
	UE_API virtual FText GetKeywords() const override;
	UE_API virtual void ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const override;

	//~ UK2Node_EditablePinBase: the pins come from the expression only.
	virtual bool CanCreateUserDefinedPin(const FEdGraphPinType& InPinType, EEdGraphPinDirection InDesiredDirection, FText& OutErrorMessage) override { return false; }

	/** The expression as the title shows it: normalised spacing, without the outermost parentheses. */
	UE_API FString GetDisplayExpression() const;

private:
	/** Empties the bound graph (tunnels excepted), the node's pins and its error, then builds NewExpression. */
	void RebuildExpression(FString NewExpression);
	void ClearExpression();
	/** Whether the bound graph holds only a pass-through, which is expanded rather than compiled as a call. */
	bool ShouldExpandInsteadCompile() const;

	/** What the last rebuild found wrong, handed to the compiler when it validates the node. */
	TSharedPtr<FCompilerResultsLog> CachedMessageLog;
	/** The expression as titled; set by a rebuild (as typed until it succeeds), worked out again after a load. */
	mutable FString CachedDisplayExpression;
	mutable bool bDisplayExpressionCached = false;
	bool bRebuilding = false;
};

#undef UE_API
