#include "MathExpression/MathExpressionParser.h"

#include "Misc/Char.h"
#include "Misc/CString.h"

namespace UE::BlueprintGraph::MathExpression
{
	namespace
	{
		/** Names, numbers and quoted strings longer than this are refused, as the editor's names are. */
		constexpr int32 MaxTokenLength = 1024;

		/**
		 * How deep an expression may nest, in parentheses and calls while reading and in operations once read. Every
		 * pass over the tree recurses, so a formula thousands of levels deep is refused instead of exhausting the stack.
		 */
		constexpr int32 MaxNesting = 200;
		constexpr int32 MaxHeight = 400;
		const TCHAR* const TooDeepError = TEXT("The expression is nested too deeply");

		bool IsDigitChar(TCHAR C)
		{
			return C >= TEXT('0') && C <= TEXT('9');
		}

		bool IsLineEnd(TCHAR C)
		{
			return C == TEXT('\n') || C == TEXT('\r') || C == 0;
		}

		/** Characters that end a name. Some are no operator today; they stay reserved so they can become one. */
		bool IsSymbolChar(TCHAR C)
		{
			switch (C)
			{
			case TEXT('{'): case TEXT('}'): case TEXT('"'): case TEXT('|'): case TEXT('&'): case TEXT('~'):
			case TEXT('^'): case TEXT('!'): case TEXT('<'): case TEXT('>'): case TEXT('='): case TEXT('+'):
			case TEXT('-'): case TEXT('*'): case TEXT('/'): case TEXT('%'): case TEXT(':'): case TEXT('('):
			case TEXT(')'): case TEXT(','): case TEXT('`'): case TEXT('['): case TEXT(']'): case TEXT('\\'):
			case TEXT(';'): case TEXT('\''): case TEXT('@'): case TEXT('#'): case TEXT('$'): case TEXT('.'):
			case TEXT('?'):
				return true;
			default:
				return false;
			}
		}

		bool IsNameEnd(TCHAR C)
		{
			return IsSymbolChar(C) || FChar::IsWhitespace(C) || IsLineEnd(C);
		}

		/** Two-character operators read as one symbol (">>>" as well). */
		bool IsSymbolPair(TCHAR A, TCHAR B)
		{
			static const TCHAR* const Pairs[] = {
				TEXT("<<"), TEXT(">>"), TEXT("!="), TEXT("<="), TEXT(">="), TEXT("++"), TEXT("--"), TEXT("+="), TEXT("-="),
				TEXT("*="), TEXT("/="), TEXT("&&"), TEXT("||"), TEXT("^^"), TEXT("=="), TEXT("**"), TEXT("~="), TEXT("::"),
			};
			for (const TCHAR* Pair : Pairs)
			{
				if (Pair[0] == A && Pair[1] == B)
				{
					return true;
				}
			}
			return false;
		}

		TSharedRef<FExpressionNode> MakeNode(EExpressionKind Kind)
		{
			TSharedRef<FExpressionNode> Node = MakeShared<FExpressionNode>();
			Node->Kind = Kind;
			return Node;
		}

		TSharedRef<FExpressionNode> MakeBinary(const FString& Operator, TSharedRef<FExpressionNode> Left, TSharedRef<FExpressionNode> Right)
		{
			TSharedRef<FExpressionNode> Node = MakeNode(EExpressionKind::Binary);
			Node->Operator = Operator;
			Node->Children.Add(Left);
			Node->Children.Add(Right);
			return Node;
		}

		/** Sets a branch's height from its children's; false when the tree grows deeper than it may. */
		bool UpdateHeight(FExpressionNode& Node)
		{
			for (const TSharedRef<FExpressionNode>& Child : Node.Children)
			{
				Node.Height = FMath::Max(Node.Height, Child->Height + 1);
			}
			return Node.Height <= MaxHeight;
		}

		/** A recursive descent over the text; the first problem found stops the reading and is kept as the error. */
		class FExpressionReader
		{
		public:
			explicit FExpressionReader(const FString& InText)
				: Text(InText)
				, Length(InText.Len())
			{
			}

			FParseResult Parse()
			{
				FParseResult Result;
				Result.Root = ReadExpression();
				// A well-formed start followed by something the grammar has no place for ("2x", "a b").
				if (Pos < Length && IsValid())
				{
					SetError(FString::Printf(TEXT("Unhandled trailing '%s' at the end of the expression"), *Text.Mid(Pos)));
				}
				Result.Error = Error;
				return Result;
			}

		private:
			bool IsValid() const { return Error.IsEmpty(); }

			void SetError(const FString& Message)
			{
				// A later problem replaces an earlier one (the last thing the reader was sure of is the most telling),
				// except that a formula too deep to read stays refused as such.
				if (Error != TooDeepError)
				{
					Error = Message;
				}
			}

			TCHAR CharAt(int32 Index) const
			{
				return Index >= 0 && Index < Length ? Text[Index] : TCHAR(0);
			}

			/** Skips blanks and comments up to the next token. */
			void SkipBlanks()
			{
				while (IsValid() && Pos < Length)
				{
					const TCHAR C = Text[Pos];
					const TCHAR Next = CharAt(Pos + 1);
					if (FChar::IsWhitespace(C))
					{
						++Pos;
					}
					else if (C == TEXT('/') && Next == TEXT('/'))
					{
						while (Pos < Length && Text[Pos] != TEXT('\n') && Text[Pos] != TEXT('\r'))
						{
							++Pos;
						}
					}
					else if (C == TEXT('/') && Next == TEXT('*'))
					{
						const int32 Close = Text.Find(TEXT("*/"), ESearchCase::CaseSensitive, ESearchDir::FromStart, Pos + 2);
						if (Close == INDEX_NONE)
						{
							Pos = Length;
							SetError(TEXT("No end to a comment by the end of the expression"));
							return;
						}
						Pos = Close + 2;
					}
					else if (C == TEXT('*') && Next == TEXT('/'))
					{
						SetError(TEXT("Unexpected '*/' outside of comment"));
						return;
					}
					else
					{
						return;
					}
				}
			}

			void SetTooLong(const FString& Start)
			{
				SetError(FString::Printf(TEXT("Identifer (%s...) exceeds maximum length of 1,024"), *Start));
			}

			/**
			 * Reads the next token. Without constants allowed (when looking for an operator), digits and signs read as
			 * symbols so that "x-1" is x, minus, 1 rather than x followed by the number -1.
			 */
			bool ReadToken(FToken& Out, bool bAllowConstants)
			{
				Out = FToken();
				if (!IsValid())
				{
					return false;
				}
				SkipBlanks();
				Out.Start = Pos;
				if (!IsValid() || Pos >= Length)
				{
					return false;
				}
				const TCHAR C = Text[Pos];
				const TCHAR Next = CharAt(Pos + 1);
				if (C == TEXT('{'))
				{
					return ReadGuid(Out);
				}
				if (bAllowConstants && (IsDigitChar(C) || ((C == TEXT('+') || C == TEXT('-')) && IsDigitChar(Next))))
				{
					return ReadNumber(Out);
				}
				if (C == TEXT('"'))
				{
					return ReadString(Out);
				}
				if (IsSymbolChar(C) || IsDigitChar(C))
				{
					Out.Kind = ETokenKind::Symbol;
					Out.Text.AppendChar(C);
					++Pos;
					if (IsSymbolPair(C, Next))
					{
						Out.Text.AppendChar(Next);
						++Pos;
						if (C == TEXT('>') && Next == TEXT('>') && CharAt(Pos) == TEXT('>'))
						{
							Out.Text.AppendChar(TEXT('>'));
							++Pos;
						}
					}
					return true;
				}
				return ReadName(Out);
			}

			bool ReadGuid(FToken& Out)
			{
				Out.Text.AppendChar(Text[Pos++]);
				for (;;)
				{
					if (Out.Text.Len() >= MaxTokenLength)
					{
						SetTooLong(Out.Text.Left(MaxTokenLength - 1));
						break;
					}
					if (Pos >= Length)
					{
						SetError(TEXT("Missing closing bracket: }"));
						break;
					}
					const TCHAR C = Text[Pos++];
					Out.Text.AppendChar(C);
					if (C == TEXT('}'))
					{
						break;
					}
				}
				Out.Kind = ETokenKind::Guid;
				Out.ConstantKind = EConstantKind::String;
				return IsValid();
			}

			bool ReadNumber(FToken& Out)
			{
				bool bIsDouble = false;
				bool bIsHex = false;
				TCHAR C = Text[Pos];
				for (;;)
				{
					bIsDouble |= C == TEXT('.');
					bIsHex |= C == TEXT('X') || C == TEXT('x');
					Out.Text.AppendChar(C);
					++Pos;
					if (Out.Text.Len() >= MaxTokenLength)
					{
						SetTooLong(Out.Text.Left(MaxTokenLength - 1));
						break;
					}
					// Letters after the first character count in upper case: "0x1f" is hexadecimal, "1.5f" a double.
					C = FChar::ToUpper(CharAt(Pos));
					const bool bContinues = IsDigitChar(C) || (!bIsDouble && C == TEXT('.')) || (!bIsHex && C == TEXT('X'))
						|| (bIsHex && C >= TEXT('A') && C <= TEXT('F'));
					if (!bContinues)
					{
						break;
					}
				}
				if (bIsDouble && C == TEXT('F'))
				{
					++Pos;
				}
				Out.Kind = ETokenKind::Constant;
				if (bIsDouble)
				{
					Out.ConstantKind = EConstantKind::Double;
					Out.DoubleValue = FCString::Atod(*Out.Text);
				}
				else
				{
					Out.ConstantKind = EConstantKind::Int;
					if (bIsHex)
					{
						TCHAR* End = nullptr;
						Out.IntValue = FCString::Strtoi(*Out.Text, &End, 0);
					}
					else
					{
						Out.IntValue = FCString::Atoi(*Out.Text);
					}
				}
				return IsValid();
			}

			bool ReadString(FToken& Out)
			{
				++Pos;
				FString Value;
				bool bClosed = false;
				while (Pos < Length)
				{
					TCHAR C = Text[Pos++];
					if (C == TEXT('"'))
					{
						bClosed = true;
						break;
					}
					if (IsLineEnd(C))
					{
						--Pos;
						break;
					}
					if (C == TEXT('\\'))
					{
						if (Pos >= Length || IsLineEnd(Text[Pos]))
						{
							break;
						}
						C = Text[Pos++];
						if (C == TEXT('n'))
						{
							C = TEXT('\n');
						}
					}
					Value.AppendChar(C);
					if (Value.Len() >= MaxTokenLength)
					{
						SetError(FString::Printf(TEXT("String constant (%s...) exceeds maximum of 1,024 characters"), *Value.Left(MaxTokenLength - 1)));
						bClosed = true;
						break;
					}
				}
				if (!bClosed)
				{
					SetError(FString::Printf(TEXT("Unterminated quoted string (%s)"), *Value));
				}
				Out.Kind = ETokenKind::Constant;
				Out.ConstantKind = EConstantKind::String;
				Out.StringValue = Value;
				return IsValid();
			}

			bool ReadName(FToken& Out)
			{
				while (Pos < Length && !IsNameEnd(Text[Pos]))
				{
					Out.Text.AppendChar(Text[Pos++]);
					if (Out.Text.Len() >= MaxTokenLength)
					{
						SetTooLong(Out.Text.Left(MaxTokenLength - 1));
						break;
					}
				}
				Out.Kind = ETokenKind::Identifier;
				if (Out.Text.Equals(TEXT("true"), ESearchCase::IgnoreCase) || Out.Text.Equals(TEXT("false"), ESearchCase::IgnoreCase))
				{
					Out.Kind = ETokenKind::Constant;
					Out.ConstantKind = EConstantKind::Bool;
					Out.bBoolValue = Out.Text.Equals(TEXT("true"), ESearchCase::IgnoreCase);
				}
				return IsValid();
			}

			/** Takes the symbol if it comes next; otherwise reads nothing. */
			bool MatchSymbol(const TCHAR* Symbol)
			{
				FToken Token;
				if (ReadToken(Token, false))
				{
					if (Token.Kind == ETokenKind::Symbol && Token.Text.Equals(Symbol, ESearchCase::IgnoreCase))
					{
						return true;
					}
					Pos = Token.Start;
				}
				return false;
			}

			bool PeekSymbol(const TCHAR* Symbol)
			{
				const int32 Saved = Pos;
				const bool bFound = MatchSymbol(Symbol);
				Pos = Saved;
				return bFound;
			}

			void RequireSymbol(const TCHAR* Symbol, const FString& Context)
			{
				if (!MatchSymbol(Symbol))
				{
					SetError(FString::Printf(TEXT("Missing '%s' in %s"), Symbol, *Context));
				}
			}

			TSharedRef<FExpressionNode> ReadExpression()
			{
				if (Nesting >= MaxNesting)
				{
					SetError(TooDeepError);
					return MakeNode(EExpressionKind::Leaf);
				}
				++Nesting;
				TSharedRef<FExpressionNode> Result = ReadConditional();
				--Nesting;
				return Result;
			}

			/** Records a finished branch, refusing the expression once it is deeper than the passes over it allow. */
			TSharedRef<FExpressionNode> Finish(TSharedRef<FExpressionNode> Node)
			{
				if (!UpdateHeight(*Node) && IsValid())
				{
					SetError(TooDeepError);
				}
				return Node;
			}

			TSharedRef<FExpressionNode> ReadConditional()
			{
				TSharedRef<FExpressionNode> Condition = ReadBinaryLevel(0);
				if (IsValid() && MatchSymbol(TEXT("?")))
				{
					TSharedRef<FExpressionNode> WhenTrue = ReadExpression();
					RequireSymbol(TEXT(":"), TEXT("?: operator"));
					TSharedRef<FExpressionNode> WhenFalse = ReadConditional();
					TSharedRef<FExpressionNode> Node = MakeNode(EExpressionKind::Conditional);
					Node->Children = { Condition, WhenTrue, WhenFalse };
					return Finish(Node);
				}
				return Condition;
			}

			/** The binary operators by precedence, loosest first; operators of one level group from the left. */
			TSharedRef<FExpressionNode> ReadBinaryLevel(int32 Level)
			{
				static const TArray<TArray<const TCHAR*>> Levels = {
					{ TEXT("||") },
					{ TEXT("&&") },
					{ TEXT("|") },
					{ TEXT("^") },
					{ TEXT("&") },
					{ TEXT("=="), TEXT("!=") },
					{ TEXT("<"), TEXT(">"), TEXT("<="), TEXT(">=") },
					{ TEXT("<<"), TEXT(">>") },
					{ TEXT("+"), TEXT("-") },
					{ TEXT("*"), TEXT("/"), TEXT("%") },
				};
				if (Level >= Levels.Num())
				{
					return ReadUnary();
				}
				TSharedRef<FExpressionNode> Left = ReadBinaryLevel(Level + 1);
				bool bMatched = true;
				while (bMatched)
				{
					bMatched = false;
					for (const TCHAR* Operator : Levels[Level])
					{
						if (IsValid() && MatchSymbol(Operator))
						{
							TSharedRef<FExpressionNode> Right = ReadBinaryLevel(Level + 1);
							Left = Finish(MakeBinary(Operator, Left, Right));
							bMatched = true;
							break;
						}
					}
				}
				return Left;
			}

			TSharedRef<FExpressionNode> ReadUnary()
			{
				static const TCHAR* const Prefixes[] = { TEXT("&"), TEXT("+"), TEXT("-"), TEXT("~"), TEXT("!") };
				for (const TCHAR* Prefix : Prefixes)
				{
					if (MatchSymbol(Prefix))
					{
						if (Nesting >= MaxNesting)
						{
							SetError(TooDeepError);
							return MakeNode(EExpressionKind::Leaf);
						}
						TSharedRef<FExpressionNode> Node = MakeNode(EExpressionKind::Unary);
						Node->Operator = Prefix;
						++Nesting;
						Node->Children.Add(ReadUnary());
						--Nesting;
						return Finish(Node);
					}
				}
				return ReadPrimary();
			}

			TSharedRef<FExpressionNode> ReadPrimary()
			{
				if (MatchSymbol(TEXT("(")))
				{
					TSharedRef<FExpressionNode> Inner = ReadExpression();
					RequireSymbol(TEXT(")"), TEXT("group closing"));
					return Inner;
				}

				FToken Token;
				ReadToken(Token, true);
				if (MatchSymbol(TEXT("(")))
				{
					TSharedRef<FExpressionNode> Arguments = MakeNode(EExpressionKind::List);
					if (!PeekSymbol(TEXT(")")))
					{
						do
						{
							Arguments->Children.Add(ReadExpression());
						} while (MatchSymbol(TEXT(",")));
					}
					TSharedRef<FExpressionNode> Call = MakeNode(EExpressionKind::Call);
					Call->Operator = Token.Text;
					Call->Token = Token;
					Call->Children.Add(Finish(Arguments));
					RequireSymbol(TEXT(")"), FString::Printf(TEXT("'%s' closing"), *Token.Text));
					return Finish(Call);
				}
				TSharedRef<FExpressionNode> Leaf = MakeNode(EExpressionKind::Leaf);
				Leaf->Token = Token;
				return Leaf;
			}

			const FString& Text;
			const int32 Length;
			int32 Pos = 0;
			int32 Nesting = 0;
			FString Error;
		};

		FString JoinList(const FExpressionNode& List, TFunctionRef<FString(const FExpressionNode&)> Print)
		{
			FString Out(TEXT("("));
			for (int32 Index = 0; Index < List.Children.Num(); ++Index)
			{
				Out += Print(*List.Children[Index]);
				Out += Index + 1 < List.Children.Num() ? TEXT(", ") : TEXT("");
			}
			Out += TEXT(")");
			return Out;
		}

		FString PrintNode(const FExpressionNode& Node, TFunctionRef<FString(const FString&)>* GuidToName)
		{
			auto Child = [GuidToName](const FExpressionNode& Sub) { return PrintNode(Sub, GuidToName); };
			switch (Node.Kind)
			{
			case EExpressionKind::Leaf:
				if (Node.Token.Kind == ETokenKind::Guid)
				{
					if (GuidToName)
					{
						return (*GuidToName)(Node.Token.Text);
					}
					return Node.Token.Text;
				}
				if (Node.Token.Kind == ETokenKind::Identifier)
				{
					return Node.Token.Text;
				}
				if (Node.Token.Kind == ETokenKind::Constant)
				{
					return Node.Token.GetConstantValue();
				}
				return TEXT("(UnexpectedTokenType)") + Node.Token.Text;
			case EExpressionKind::Binary:
				return FString::Printf(TEXT("(%s %s %s)"), *Child(*Node.Children[0]), *Node.Operator, *Child(*Node.Children[1]));
			case EExpressionKind::Unary:
				return FString::Printf(TEXT("(%s%s)"), *Node.Operator, *Child(*Node.Children[0]));
			case EExpressionKind::Conditional:
				return FString::Printf(TEXT("(%s ? %s : %s)"), *Child(*Node.Children[0]), *Child(*Node.Children[1]), *Child(*Node.Children[2]));
			case EExpressionKind::List:
				return JoinList(Node, Child);
			case EExpressionKind::Call:
				return FString::Printf(TEXT("(%s%s)"), *Node.Operator, *JoinList(*Node.Children[0], Child));
			}
			return FString();
		}
	}

	FString FToken::GetConstantValue() const
	{
		switch (ConstantKind)
		{
		case EConstantKind::Int:
			return FString::Printf(TEXT("%d"), IntValue);
		case EConstantKind::Double:
			return FString::Printf(TEXT("%f"), DoubleValue);
		case EConstantKind::Bool:
			return bBoolValue ? TEXT("TRUE") : TEXT("FALSE");
		case EConstantKind::String:
			return Kind == ETokenKind::Guid ? Text : StringValue;
		default:
			return TEXT("InvalidTypeForAToken");
		}
	}

	FString FExpressionNode::ToString() const
	{
		return PrintNode(*this, nullptr);
	}

	FString FExpressionNode::ToDisplayString(TFunctionRef<FString(const FString& GuidText)> GuidToName) const
	{
		return PrintNode(*this, &GuidToName);
	}

	bool FExpressionNode::Walk(TFunctionRef<bool(FExpressionNode& Node, EVisitPhase Phase)> Visitor)
	{
		if (Kind == EExpressionKind::Leaf)
		{
			return Visitor(*this, EVisitPhase::Leaf);
		}
		if (!Visitor(*this, EVisitPhase::Pre))
		{
			return false;
		}
		// A conditional's condition is never visited: the node refuses conditionals as a whole.
		for (int32 Index = Kind == EExpressionKind::Conditional ? 1 : 0; Index < Children.Num(); ++Index)
		{
			if (!Children[Index]->Walk(Visitor))
			{
				return false;
			}
		}
		return Visitor(*this, EVisitPhase::Post);
	}

	FParseResult ParseExpression(const FString& Text)
	{
		FExpressionReader Reader(Text);
		return Reader.Parse();
	}

	FString SanitizeDisplayExpression(FString Expression)
	{
		Expression.RemoveFromStart(TEXT("("));
		Expression.RemoveFromEnd(TEXT(")"));
		return Expression;
	}
}
