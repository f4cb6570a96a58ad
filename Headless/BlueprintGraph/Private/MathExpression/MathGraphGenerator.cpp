#include "MathExpression/MathGraphGenerator.h"

#include "MathExpression/MathExpressionParser.h"

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Engine/MemberReference.h"
#include "K2Node_CallFunction.h"
#include "K2Node_FunctionEntry.h"
#include "K2Node_MathExpression.h"
#include "K2Node_Tunnel.h"
#include "K2Node_VariableGet.h"
#include "Kismet/BlueprintFunctionLibrary.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Misc/DefaultValueHelper.h"
#include "UObject/Class.h"
#include "UObject/FieldIterator.h"
#include "UObject/UObjectIterator.h"
#include "UObject/UnrealType.h"

namespace UE::BlueprintGraph::MathExpression
{
	namespace
	{
		//////////////////////////////////////////////////////////////////////////
		// Blueprint variables

		/** The Blueprint and the Blueprints it derives from, nearest first. */
		TArray<const UBlueprint*> GetBlueprintChain(const UBlueprint* Blueprint)
		{
			TArray<const UBlueprint*> Chain;
			while (Blueprint && !Chain.Contains(Blueprint))
			{
				Chain.Add(Blueprint);
				Blueprint = Blueprint->ParentClass ? UBlueprint::GetBlueprintFromClass(Blueprint->ParentClass) : nullptr;
			}
			return Chain;
		}

		/** The function entry of the function graph that holds Node, however deeply it is collapsed. */
		const UK2Node_FunctionEntry* FindFunctionEntry(const UK2Node& Node)
		{
			const UEdGraph* TopGraph = Node.GetGraph();
			for (const UObject* Outer = TopGraph; Outer && !Cast<UBlueprint>(Outer); Outer = Outer->GetOuter())
			{
				if (const UEdGraph* Graph = Cast<UEdGraph>(Outer))
				{
					TopGraph = Graph;
				}
			}
			if (!TopGraph)
			{
				return nullptr;
			}
			for (const UEdGraphNode* Candidate : TopGraph->Nodes)
			{
				if (const UK2Node_FunctionEntry* Entry = Cast<UK2Node_FunctionEntry>(Candidate))
				{
					return Entry;
				}
			}
			return nullptr;
		}

		FGuid FindMemberVariableGuidByName(const UBlueprint* Blueprint, FName Name)
		{
			for (const UBlueprint* Link : GetBlueprintChain(Blueprint))
			{
				for (const FBPVariableDescription& Variable : Link->NewVariables)
				{
					if (Variable.VarName == Name)
					{
						return Variable.VarGuid;
					}
				}
			}
			return FGuid();
		}

		FName FindMemberVariableNameByGuid(const UBlueprint* Blueprint, const FGuid& Guid)
		{
			for (const UBlueprint* Link : GetBlueprintChain(Blueprint))
			{
				for (const FBPVariableDescription& Variable : Link->NewVariables)
				{
					if (Variable.VarGuid == Guid)
					{
						return Variable.VarName;
					}
				}
			}
			return NAME_None;
		}

		//////////////////////////////////////////////////////////////////////////
		// The operator table

		/**
		 * Names a formula uses for library functions whose own names nobody would type ("POW" for
		 * MultiplyMultiply_FloatFloat). A function with aliases is known by them only.
		 */
		const TArray<FString>* FindOperatorAliases(const FString& FunctionName)
		{
			struct FAliasEntry
			{
				const TCHAR* Function;
				TArray<FString> Aliases;
			};
			static const TArray<FAliasEntry> Table = {
				{ TEXT("BooleanAND"), { TEXT("&&") } },
				{ TEXT("BooleanOR"), { TEXT("||") } },
				{ TEXT("BooleanXOR"), { TEXT("^") } },
				{ TEXT("Not_PreBool"), { TEXT("!") } },
				{ TEXT("Square"), { TEXT("SQUARE") } },
				{ TEXT("FClamp"), { TEXT("CLAMP") } },
				{ TEXT("MultiplyMultiply_FloatFloat"), { TEXT("POWER"), TEXT("POW") } },
				{ TEXT("FCeil"), { TEXT("FCEIL"), TEXT("CEIL") } },
				{ TEXT("ASin"), { TEXT("ASIN"), TEXT("ARCSIN") } },
				{ TEXT("ACos"), { TEXT("ACOS"), TEXT("ARCCOS") } },
				{ TEXT("ATan"), { TEXT("ATAN"), TEXT("ARCTAN") } },
				{ TEXT("DegAtan"), { TEXT("DEGATAN"), TEXT("DEGARCTAN") } },
				{ TEXT("DegAtan2"), { TEXT("DEGATAN2"), TEXT("DEGARCTAN2") } },
				{ TEXT("DegreesToRadians"), { TEXT("DEGTORAD"), TEXT("D2R") } },
				{ TEXT("RadiansToDegrees"), { TEXT("RADTODEG"), TEXT("R2D") } },
				{ TEXT("ATan2"), { TEXT("ATAN2"), TEXT("ARCTAN2") } },
				{ TEXT("MakeVector"), { TEXT("VECTOR"), TEXT("VEC"), TEXT("VECT") } },
				{ TEXT("MakeVector2D"), { TEXT("VECTOR2D"), TEXT("VEC2D"), TEXT("VECT2D") } },
				{ TEXT("MakeRotator"), { TEXT("ROTATOR"), TEXT("ROT") } },
				{ TEXT("MakeTransform"), { TEXT("TRANSFORM"), TEXT("XFORM") } },
				{ TEXT("MakeColor"), { TEXT("COLOR"), TEXT("LINEARCOLOR"), TEXT("COLOUR") } },
				{ TEXT("RandomFloat"), { TEXT("RandomFloat"), TEXT("RAND"), TEXT("RANDOM") } },
				{ TEXT("Dot_VectorVector"), { TEXT("Dot") } },
				{ TEXT("Cross_VectorVector"), { TEXT("Cross") } },
			};
			for (const FAliasEntry& Entry : Table)
			{
				if (FunctionName == Entry.Function)
				{
					return &Entry.Aliases;
				}
			}
			return nullptr;
		}

		/**
		 * Operators and function names of an expression, each with the pure library functions it may stand for,
		 * in the order the classes and their functions were registered. Keys ignore case, as names do.
		 */
		class FOperatorTable
		{
		public:
			FOperatorTable()
			{
				for (TObjectIterator<UClass> It; It; ++It)
				{
					UClass* Library = *It;
					if (!Library->IsChildOf(UBlueprintFunctionLibrary::StaticClass()) || Library->HasAnyClassFlags(CLASS_Abstract))
					{
						continue;
					}
					for (TFieldIterator<UFunction> FunctionIt(Library, EFieldIteratorFlags::ExcludeSuper); FunctionIt; ++FunctionIt)
					{
						UFunction* Function = *FunctionIt;
						if (!Function->HasAnyFunctionFlags(FUNC_BlueprintPure) || !Function->GetReturnProperty())
						{
							continue;
						}
						const FString FunctionName = Function->GetName();
						if (const TArray<FString>* Aliases = FindOperatorAliases(FunctionName))
						{
							for (const FString& Alias : *Aliases)
							{
								Table.FindOrAdd(Alias).Add(Function);
							}
							continue;
						}
						// What the node shows is what people type: its compact title ("+", "SIN"), else its display name.
						FString Key = FunctionName;
						if (Function->HasMetaData(FBlueprintMetadata::MD_CompactNodeTitle))
						{
							Key = Function->GetMetaData(FBlueprintMetadata::MD_CompactNodeTitle);
						}
						else if (Function->HasMetaData(FBlueprintMetadata::MD_DisplayName))
						{
							Key = Function->GetMetaData(FBlueprintMetadata::MD_DisplayName);
						}
						Table.FindOrAdd(FDefaultValueHelper::RemoveWhitespaces(Key)).Add(Function);
					}
				}
			}

			bool Contains(const FString& Operator) const
			{
				return Table.Contains(Operator);
			}

			/**
			 * The first function of Operator whose leading parameters take the arguments. Failing that, arguments are
			 * widened step by step (bytes to ints, then ints to doubles) and the search runs again after each step.
			 */
			UFunction* FindMatchingFunction(const FString& Operator, TArray<FEdGraphPinType> ArgumentTypes) const
			{
				if (UFunction* Match = FindExactly(Operator, ArgumentTypes))
				{
					return Match;
				}
				for (int32 Step = 0; Step < 2; ++Step)
				{
					bool bWidened = false;
					for (FEdGraphPinType& Type : ArgumentTypes)
					{
						if (Step == 0 && Type.PinCategory == UEdGraphSchema_K2::PC_Byte)
						{
							Type.PinCategory = UEdGraphSchema_K2::PC_Int;
							Type.PinSubCategoryObject = nullptr;
							bWidened = true;
						}
						else if (Step == 1 && Type.PinCategory == UEdGraphSchema_K2::PC_Int)
						{
							Type.PinCategory = UEdGraphSchema_K2::PC_Real;
							Type.PinSubCategory = UEdGraphSchema_K2::PC_Double;
							Type.PinSubCategoryObject = nullptr;
							bWidened = true;
						}
					}
					if (bWidened)
					{
						if (UFunction* Match = FindExactly(Operator, ArgumentTypes))
						{
							return Match;
						}
					}
				}
				return nullptr;
			}

		private:
			UFunction* FindExactly(const FString& Operator, const TArray<FEdGraphPinType>& ArgumentTypes) const
			{
				const TArray<UFunction*>* Candidates = Table.Find(Operator);
				if (!Candidates)
				{
					return nullptr;
				}
				const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
				for (UFunction* Candidate : *Candidates)
				{
					// Extra trailing parameters are fine (they keep their defaults); missing ones are not.
					int32 Matched = 0;
					for (TFieldIterator<FProperty> It(Candidate); It && It->HasAnyPropertyFlags(CPF_Parm); ++It)
					{
						if (It->HasAnyPropertyFlags(CPF_ReturnParm))
						{
							continue;
						}
						FEdGraphPinType ParamType;
						if (Matched >= ArgumentTypes.Num() || !Schema->ConvertPropertyToPinType(*It, ParamType)
							|| !Schema->ArePinTypesCompatible(ArgumentTypes[Matched], ParamType))
						{
							break;
						}
						++Matched;
					}
					if (Matched == ArgumentTypes.Num())
					{
						return Candidate;
					}
				}
				return nullptr;
			}

			TMap<FString, TArray<UFunction*>> Table;
		};

		//////////////////////////////////////////////////////////////////////////
		// Fragments: what an expression node became, ready to feed an input

		struct FFragment
		{
			enum class EKind : uint8
			{
				Literal,
				InputPin,
				FunctionCall,
				VariableGet,
			};

			EKind Kind = EKind::Literal;
			FEdGraphPinType Type;
			FString LiteralValue;
			UEdGraphPin* TunnelPin = nullptr;
			UK2Node_CallFunction* Call = nullptr;
			UK2Node_VariableGet* VariableGet = nullptr;
		};

		class FGraphGenerator
		{
		public:
			FGraphGenerator(UK2Node_MathExpression& InNode, FCompilerResultsLog& InLog)
				: Node(InNode)
				, Log(InLog)
				, Blueprint(InNode.GetBlueprint())
				, Schema(GetDefault<UEdGraphSchema_K2>())
			{
			}

			bool Generate(FExpressionNode& Root, TArray<FName>& OutUsedInputs)
			{
				const int32 ErrorsBefore = Log.NumErrors;
				ChartLayout(Root);
				// Reset to the widest possible bounds; placing nodes narrows them to what was used.
				MinColumn = MaxDepth;
				MaxColumn = -MaxDepth;

				Root.Walk([this](FExpressionNode& Expression, EVisitPhase Phase) { return Visit(Expression, Phase); });

				UK2Node_Tunnel* Entry = Node.GetEntryNode();
				UK2Node_Tunnel* Exit = Node.GetExitNode();
				if (const FFragment* Result = Fragments.Find(&Root))
				{
					UEdGraphPin* ReturnPin = Exit ? Exit->CreateUserDefinedPin(UEdGraphSchema_K2::PN_ReturnValue, Result->Type, EGPD_Input) : nullptr;
					if (!ReturnPin || !ConnectToInput(*Result, ReturnPin))
					{
						Log.Error(TEXT("Failed to connect the generated nodes with expression's result pin: '@@'"), ReturnPin);
					}
				}
				else if (Log.NumErrors == 0)
				{
					Log.Error(TEXT("No root node generated from the expression: '@@'"), &Node);
				}

				if (Entry)
				{
					const FVector2D EntryPosition = GetNodePosition(MinColumn - 1, 0);
					Entry->NodePosX = static_cast<int32>(EntryPosition.X);
					Entry->NodePosY = static_cast<int32>(EntryPosition.Y);
				}
				if (Exit)
				{
					const FVector2D ExitPosition = GetNodePosition(MaxColumn + 1, 0);
					Exit->NodePosX = static_cast<int32>(ExitPosition.X);
					Exit->NodePosY = static_cast<int32>(ExitPosition.Y);
				}
				OutUsedInputs = UsedInputs;
				return Log.NumErrors == ErrorsBefore;
			}

		private:
			//////////////////////////////////////////////////////////////////////////
			// Layout: operations in columns by depth (the result rightmost), stacked in the order they are met.

			void ChartLayout(FExpressionNode& Root)
			{
				int32 Depth = 0;
				Root.Walk([this, &Depth](FExpressionNode& Expression, EVisitPhase Phase)
				{
					if (Phase == EVisitPhase::Pre)
					{
						++Depth;
						MaxDepth = FMath::Max(MaxDepth, Depth);
						return true;
					}
					if (Phase == EVisitPhase::Post)
					{
						--Depth;
					}
					int32& Stacked = CountAtDepth.FindOrAdd(Depth);
					DepthOf.Add(&Expression, Depth);
					RowOf.Add(&Expression, Stacked);
					++Stacked;
					return true;
				});
			}

			FVector2D GetNodePosition(int32 Column, int32 Row) const
			{
				const int32 CountInColumn = CountAtDepth.FindRef(MaxDepth - Column);
				const float Middle = float(FMath::Max(CountInColumn, 1)) * 0.5f;
				constexpr float RowHeight = 140.0f;
				constexpr float ColumnWidth = 240.0f;
				return FVector2D(double(Column) * ColumnWidth, double((float(Row) - Middle + 0.5f) * RowHeight));
			}

			void PlaceNode(UK2Node& Placed, const FExpressionNode& Expression)
			{
				const int32 Row = RowOf.FindRef(&Expression);
				const int32 Column = MaxDepth - DepthOf.FindRef(&Expression);
				MinColumn = FMath::Min(MinColumn, Column);
				MaxColumn = FMath::Max(MaxColumn, Column);
				const FVector2D Position = GetNodePosition(Column, Row);
				Placed.NodePosX = static_cast<int32>(Position.X);
				Placed.NodePosY = static_cast<int32>(Position.Y);
			}

			//////////////////////////////////////////////////////////////////////////
			// Visiting the tree. Errors do not stop the walk: every problem of the expression is reported at once.

			bool Visit(FExpressionNode& Expression, EVisitPhase Phase)
			{
				switch (Expression.Kind)
				{
				case EExpressionKind::Leaf:
					VisitLeaf(Expression);
					break;
				case EExpressionKind::Binary:
					if (Phase == EVisitPhase::Post)
					{
						TArray<const FFragment*> Arguments = { Fragments.Find(&*Expression.Children[0]), Fragments.Find(&*Expression.Children[1]) };
						AddFunctionCall(Expression, Expression.Operator, Arguments);
					}
					break;
				case EExpressionKind::Call:
					if (Phase == EVisitPhase::Post)
					{
						TArray<const FFragment*> Arguments;
						for (const TSharedRef<FExpressionNode>& Argument : Expression.Children[0]->Children)
						{
							Arguments.Add(Fragments.Find(&*Argument));
						}
						AddFunctionCall(Expression, Expression.Operator, Arguments);
					}
					break;
				case EExpressionKind::List:
					break;
				case EExpressionKind::Unary:
					if (Phase == EVisitPhase::Pre)
					{
						Log.Error(*FString::Printf(TEXT("Currently, unary operators %s are prohibited in expressions: '@@'"), *Expression.ToString()), &Node);
					}
					break;
				case EExpressionKind::Conditional:
					if (Phase == EVisitPhase::Pre)
					{
						Log.Error(*FString::Printf(TEXT("Currently, conditional operators %s are prohibited in expressions: '@@'"), *Expression.ToString()), &Node);
					}
					break;
				}
				return true;
			}

			void VisitLeaf(FExpressionNode& Expression)
			{
				FToken& Token = Expression.Token;
				if (Token.Kind == ETokenKind::Constant)
				{
					AddLiteral(Expression);
					return;
				}
				if (Token.Kind != ETokenKind::Identifier && Token.Kind != ETokenKind::Guid)
				{
					Log.Error(*FString::Printf(TEXT("Unhandled token '%s' in expression: '@@'"), *Token.Text), &Node);
					return;
				}

				// A Blueprint variable is read where it is named; any other name becomes an input of the node.
				FMemberReference Reference;
				FGuid VariableGuid;
				const FString GraphName = Node.GetGraph() ? Node.GetGraph()->GetName() : FString();
				if (Token.Kind == ETokenKind::Guid && FGuid::Parse(Token.Text, VariableGuid))
				{
					const FName MemberName = FindMemberVariableNameByGuid(Blueprint, VariableGuid);
					if (MemberName.IsNone())
					{
						Reference.SetLocalMember(FindLocalVariableName(VariableGuid), GraphName, VariableGuid);
					}
					else
					{
						Reference.SetSelfMember(MemberName);
					}
				}
				else if (Token.Kind == ETokenKind::Identifier)
				{
					const FName VariableName(*Token.Text);
					VariableGuid = FindMemberVariableGuidByName(Blueprint, VariableName);
					if (VariableGuid.IsValid())
					{
						Reference.SetSelfMember(VariableName);
					}
					else
					{
						VariableGuid = FindLocalVariableGuid(VariableName);
						if (VariableGuid.IsValid())
						{
							Reference.SetLocalMember(VariableName, GraphName, VariableGuid);
						}
					}
					if (VariableGuid.IsValid())
					{
						// The node keeps the variable by guid, so renaming the variable keeps the expression.
						Token.Text = VariableGuid.ToString(EGuidFormats::DigitsWithHyphensInBraces);
						Token.Kind = ETokenKind::Guid;
					}
				}

				FProperty* Property = (Blueprint && !Reference.GetMemberName().IsNone()) ? Reference.ResolveMember<FProperty>(const_cast<UBlueprint*>(Blueprint)) : nullptr;
				if (Property)
				{
					AddVariableGet(Expression, *Property, Reference);
				}
				else if (Token.Kind != ETokenKind::Guid)
				{
					AddInputPin(Expression, FName(*Token.Text));
				}
			}

			FName FindLocalVariableName(const FGuid& Guid) const
			{
				if (const UK2Node_FunctionEntry* Entry = FindFunctionEntry(Node))
				{
					for (const FBPVariableDescription& Local : Entry->LocalVariables)
					{
						if (Local.VarGuid == Guid)
						{
							return Local.VarName;
						}
					}
				}
				return NAME_None;
			}

			FGuid FindLocalVariableGuid(FName Name) const
			{
				if (const UK2Node_FunctionEntry* Entry = FindFunctionEntry(Node))
				{
					for (const FBPVariableDescription& Local : Entry->LocalVariables)
					{
						if (Local.VarName == Name)
						{
							return Local.VarGuid;
						}
					}
				}
				return FGuid();
			}

			void AddLiteral(const FExpressionNode& Expression)
			{
				FFragment Fragment;
				Fragment.Kind = FFragment::EKind::Literal;
				Fragment.LiteralValue = Expression.Token.GetConstantValue();
				switch (Expression.Token.ConstantKind)
				{
				case EConstantKind::Bool:
					Fragment.Type.PinCategory = UEdGraphSchema_K2::PC_Boolean;
					break;
				case EConstantKind::Double:
					Fragment.Type.PinCategory = UEdGraphSchema_K2::PC_Real;
					Fragment.Type.PinSubCategory = UEdGraphSchema_K2::PC_Double;
					break;
				case EConstantKind::Int:
					Fragment.Type.PinCategory = UEdGraphSchema_K2::PC_Int;
					break;
				case EConstantKind::String:
					Fragment.Type.PinCategory = UEdGraphSchema_K2::PC_String;
					break;
				default:
					Log.Error(TEXT("Unknown literal type in expression: '@@'"), &Node);
					break;
				}
				Fragments.Add(&Expression, Fragment);
			}

			void AddInputPin(const FExpressionNode& Expression, FName PinName)
			{
				UK2Node_Tunnel* Entry = Node.GetEntryNode();
				if (!Entry)
				{
					Log.Error(TEXT("Failed to generate full expression graph for: '@@'"), &Node);
					return;
				}
				// A pin kept from an earlier expression keeps the type the user may have given it.
				UEdGraphPin* Pin = Entry->FindPin(PinName);
				if (!Pin)
				{
					FEdGraphPinType DoubleType;
					DoubleType.PinCategory = UEdGraphSchema_K2::PC_Real;
					DoubleType.PinSubCategory = UEdGraphSchema_K2::PC_Double;
					Pin = Entry->CreateUserDefinedPin(PinName, DoubleType, EGPD_Output);
				}
				if (!Pin)
				{
					Log.Error(TEXT("Failed to generate full expression graph for: '@@'"), &Node);
					return;
				}
				FFragment Fragment;
				Fragment.Kind = FFragment::EKind::InputPin;
				Fragment.Type = Pin->PinType;
				Fragment.TunnelPin = Pin;
				Fragments.Add(&Expression, Fragment);
				UsedInputs.Add(PinName);
			}

			void AddVariableGet(const FExpressionNode& Expression, FProperty& Property, const FMemberReference& Reference)
			{
				const UClass* AccessClass = Blueprint ? Blueprint->SkeletonGeneratedClass.Get() : nullptr;
				const bool bAccessible = Reference.IsLocalScope()
					|| (Property.HasAnyPropertyFlags(CPF_BlueprintVisible) && (!Property.HasMetaData(TEXT("BlueprintPrivate"))
						|| !AccessClass || Property.GetOwnerClass() == AccessClass));
				if (!bAccessible)
				{
					Log.Error(*FString::Printf(TEXT("Cannot access the blueprint's '%s' variable from the expression: '@@'"), *Property.GetName()), &Node);
					return;
				}
				FEdGraphPinType VariableType;
				if (!Schema->ConvertPropertyToPinType(&Property, VariableType))
				{
					Log.Error(*FString::Printf(TEXT("Blueprint '%s' variable is incompatible with graph pins in the expression: '@@'"), *Property.GetName()), &Node);
					return;
				}
				UK2Node_VariableGet* Get = Cast<UK2Node_VariableGet>(Node.BoundGraph->CreateNode(UK2Node_VariableGet::StaticClass(), false, false));
				Get->VariableReference = Reference;
				PlaceNode(*Get, Expression);
				Get->CreateNewGuid();
				Get->PostPlacedNewNode();
				Get->AllocateDefaultPins();

				FFragment Fragment;
				Fragment.Kind = FFragment::EKind::VariableGet;
				Fragment.Type = VariableType;
				Fragment.VariableGet = Get;
				Fragments.Add(&Expression, Fragment);
			}

			void AddFunctionCall(const FExpressionNode& Expression, const FString& FunctionName, const TArray<const FFragment*>& Arguments)
			{
				bool bMissingArgument = false;
				TArray<FEdGraphPinType> ArgumentTypes;
				for (int32 Index = 0; Index < Arguments.Num(); ++Index)
				{
					if (!Arguments[Index])
					{
						Log.Error(*FString::Printf(TEXT("Failed to generate argument #%d for the '%s' function, in the expression: '@@'"), Index + 1, *FunctionName), &Node);
						bMissingArgument = true;
						continue;
					}
					ArgumentTypes.Add(Arguments[Index]->Type);
				}

				if (!Operators.Contains(FunctionName))
				{
					Log.Error(*FString::Printf(TEXT("Unknown function '%s' in the expression: '@@'"), *FunctionName), &Node);
					return;
				}
				if (bMissingArgument)
				{
					return;
				}
				UFunction* Function = Operators.FindMatchingFunction(FunctionName, ArgumentTypes);
				if (!Function)
				{
					Log.Error(*FString::Printf(TEXT("Cannot find a '%s' function that takes the supplied param types, for expression: '@@'"), *FunctionName), &Node);
					return;
				}
				FEdGraphPinType ReturnType;
				const FProperty* ReturnProperty = Function->GetReturnProperty();
				if (!ReturnProperty)
				{
					Log.Error(*FString::Printf(TEXT("The '%s' function returns nothing, it cannot be used in the expression: '@@'"), *FunctionName), &Node);
					return;
				}
				if (!Schema->ConvertPropertyToPinType(ReturnProperty, ReturnType))
				{
					Log.Error(*FString::Printf(TEXT("The '%s' function's return type is incompatible with graph pins in the expression: '@@'"), *FunctionName), &Node);
					return;
				}

				UK2Node_CallFunction* Call = Cast<UK2Node_CallFunction>(Node.BoundGraph->CreateNode(UK2Node_CallFunction::StaticClass(), false, false));
				Call->SetFromFunction(Function);
				PlaceNode(*Call, Expression);
				Call->CreateNewGuid();
				Call->PostPlacedNewNode();
				Call->AllocateDefaultPins();

				const int32 ErrorsBefore = Log.NumErrors;
				int32 ArgumentIndex = 0;
				// Copy: wiring may insert conversion nodes, never pins of this node, but stay safe against reshaping.
				const TArray<UEdGraphPin*> CallPins = Call->Pins;
				for (UEdGraphPin* InputPin : CallPins)
				{
					if (Schema->IsMetaPin(*InputPin) || InputPin->Direction != EGPD_Input)
					{
						continue;
					}
					if (ArgumentIndex < Arguments.Num())
					{
						if (!ConnectToInput(*Arguments[ArgumentIndex], InputPin))
						{
							Log.Error(*FString::Printf(TEXT("Failed to connect parameter #%d with input on '@@'"), ArgumentIndex + 1), Call);
						}
					}
					else if (InputPin->DefaultValue.IsEmpty())
					{
						// Parameters past the arguments must have defaults of their own (the tolerance of vector equality).
						Log.Error(TEXT("The '@@' function requires more parameters than were provided"), Call);
						break;
					}
					++ArgumentIndex;
				}
				if (Log.NumErrors > ErrorsBefore)
				{
					Log.Error(TEXT("Internal node error for expression: '@@'"), &Node);
				}

				FFragment Fragment;
				Fragment.Kind = FFragment::EKind::FunctionCall;
				Fragment.Type = ReturnType;
				Fragment.Call = Call;
				Fragments.Add(&Expression, Fragment);
			}

			/** Feeds Fragment into InputPin: a wire from its output, or its literal typed into the pin. */
			bool ConnectToInput(const FFragment& Fragment, UEdGraphPin* InputPin)
			{
				switch (Fragment.Kind)
				{
				case FFragment::EKind::Literal:
					Schema->TrySetDefaultValue(*InputPin, Fragment.LiteralValue, false);
					return true;
				case FFragment::EKind::InputPin:
					return ConnectPins(Fragment.TunnelPin, InputPin);
				case FFragment::EKind::FunctionCall:
					if (UEdGraphPin* ResultPin = Fragment.Call->GetReturnValuePin())
					{
						return ConnectPins(ResultPin, InputPin);
					}
					Log.Error(TEXT("Failed to find an output pin for: '@@'"), Fragment.Call);
					return false;
				case FFragment::EKind::VariableGet:
					if (UEdGraphPin* ValuePin = Fragment.VariableGet->FindPin(Fragment.VariableGet->VariableReference.GetMemberName()))
					{
						return ConnectPins(ValuePin, InputPin);
					}
					Log.Error(*FString::Printf(TEXT("Failed to find the '%s' pin for: '@@'"), *Fragment.VariableGet->VariableReference.GetMemberName().ToString()), Fragment.VariableGet);
					return false;
				}
				return false;
			}

			bool ConnectPins(UEdGraphPin* OutputPin, UEdGraphPin* InputPin)
			{
				// Through the schema, so a wire that needs a conversion gets its conversion node.
				const bool bConnected = Schema->TryCreateConnection(OutputPin, InputPin);
				if (!bConnected)
				{
					Log.Error(TEXT("Output pin '@@ 'is not compatible with input: '@@'"), OutputPin, InputPin);
				}
				return bConnected;
			}

			UK2Node_MathExpression& Node;
			FCompilerResultsLog& Log;
			const UBlueprint* Blueprint;
			const UEdGraphSchema_K2* Schema;
			FOperatorTable Operators;

			TMap<const FExpressionNode*, FFragment> Fragments;
			TArray<FName> UsedInputs;

			TMap<const FExpressionNode*, int32> DepthOf;
			TMap<const FExpressionNode*, int32> RowOf;
			TMap<int32, int32> CountAtDepth;
			int32 MaxDepth = 0;
			int32 MinColumn = 0;
			int32 MaxColumn = 0;
		};
	}

	bool GenerateGraph(UK2Node_MathExpression& Node, FExpressionNode& Root, FCompilerResultsLog& Log, TArray<FName>& OutUsedInputs)
	{
		FGraphGenerator Generator(Node, Log);
		return Generator.Generate(Root, OutUsedInputs);
	}

	FName FindVariableNameByGuid(const UK2Node& Node, const FGuid& VariableGuid)
	{
		const FName MemberName = FindMemberVariableNameByGuid(Node.GetBlueprint(), VariableGuid);
		if (!MemberName.IsNone())
		{
			return MemberName;
		}
		if (const UK2Node_FunctionEntry* Entry = FindFunctionEntry(Node))
		{
			for (const FBPVariableDescription& Local : Entry->LocalVariables)
			{
				if (Local.VarGuid == VariableGuid)
				{
					return Local.VarName;
				}
			}
		}
		return NAME_None;
	}
}
