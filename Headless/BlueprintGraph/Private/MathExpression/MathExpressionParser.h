#pragma once

#include "CoreMinimal.h"
#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "Templates/Function.h"
#include "Templates/SharedPointer.h"

// The text side of a math expression node: reading "sin(x) * 2 + y" into a tree, and printing the tree back in
// the fully parenthesised form the node stores ("((sin(x)) * 2) + y" becomes "(((sin(x)) * 2) + y)").
namespace UE::BlueprintGraph::MathExpression
{
	/** What a word of the expression is. */
	enum class ETokenKind : uint8
	{
		None,		// nothing was read (the end of the text)
		Identifier,	// a name: a variable or a function
		Guid,		// a variable already bound to a Blueprint member, written "{guid}"
		Symbol,		// an operator or punctuation
		Constant,
	};

	enum class EConstantKind : uint8
	{
		None,
		Int,
		Double,
		Bool,
		String,
	};

	struct FToken
	{
		ETokenKind Kind = ETokenKind::None;
		EConstantKind ConstantKind = EConstantKind::None;
		/** The word as read (identifiers, guids, symbols; numbers as written, upper-cased after the first character). */
		FString Text;
		int32 IntValue = 0;
		double DoubleValue = 0.0;
		bool bBoolValue = false;
		/** The characters of a string constant, escapes resolved. */
		FString StringValue;
		/** Where the token starts in the expression. */
		int32 Start = 0;

		/** A constant as the node writes it back: ints plainly, doubles with six decimals, TRUE/FALSE, strings bare. */
		FString GetConstantValue() const;
	};

	enum class EExpressionKind : uint8
	{
		Leaf,			// a token: constant, variable or guid
		Binary,			// Children: left, right
		Unary,			// Children: operand
		Conditional,	// Children: condition, when true, when false
		List,			// Children: the items of an argument list
		Call,			// Children: one List, the arguments
	};

	/** Where Walk is in a node. */
	enum class EVisitPhase : uint8
	{
		Pre,
		Post,
		Leaf,
	};

	/** A node of the parsed tree. */
	struct FExpressionNode
	{
		EExpressionKind Kind = EExpressionKind::Leaf;
		FToken Token;
		/** The operator of a binary or unary node, the function name of a call. */
		FString Operator;
		TArray<TSharedRef<FExpressionNode>> Children;
		/** Levels from this node down to its deepest leaf (1 for a leaf). */
		int32 Height = 1;

		/** The stored form: every operation in parentheses, variables as written (or as guids once bound). */
		FString ToString() const;
		/** As ToString, with bound variables shown by name: GuidToName returns the name, or empty to keep the text. */
		FString ToDisplayString(TFunctionRef<FString(const FString& GuidText)> GuidToName) const;

		/**
		 * Visits the tree as the graph is built from it: a branch before (bPre) and after its children, a leaf once.
		 * The condition of a conditional is not visited: such expressions are refused before it would matter.
		 * Visitor returns false to stop.
		 */
		bool Walk(TFunctionRef<bool(FExpressionNode& Node, EVisitPhase Phase)> Visitor);
	};

	struct FParseResult
	{
		TSharedPtr<FExpressionNode> Root;
		/** Why the text is not an expression; empty when it is. */
		FString Error;

		bool IsValid() const { return Error.IsEmpty(); }
	};

	/**
	 * Reads an expression with the usual precedence: || below &&, then |, ^, &, equality, comparisons, shifts, + and -,
	 * then * / %, prefix operators, calls and parentheses. Unary operators and conditionals are read (and refused
	 * later, when the graph is built).
	 */
	FParseResult ParseExpression(const FString& Text);

	/** Removes the outermost parentheses the stored form adds: "(x + 1)" shows as "x + 1". */
	FString SanitizeDisplayExpression(FString Expression);
}
