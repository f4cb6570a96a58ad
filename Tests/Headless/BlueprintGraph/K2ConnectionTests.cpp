#include "K2TestTypes.h"

#include "UObject/Class.h"

IMPLEMENT_CLASS(UK2TestNode)

using namespace K2Test;

namespace
{
	using K2 = UEdGraphSchema_K2;

	const TCHAR* ResponseName(ECanCreateConnectionResponse Response)
	{
		switch (Response)
		{
		case CONNECT_RESPONSE_MAKE: return TEXT("MAKE");
		case CONNECT_RESPONSE_DISALLOW: return TEXT("DISALLOW");
		case CONNECT_RESPONSE_BREAK_OTHERS_A: return TEXT("BREAK_OTHERS_A");
		case CONNECT_RESPONSE_BREAK_OTHERS_B: return TEXT("BREAK_OTHERS_B");
		case CONNECT_RESPONSE_BREAK_OTHERS_AB: return TEXT("BREAK_OTHERS_AB");
		case CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE: return TEXT("CONVERSION");
		case CONNECT_RESPONSE_MAKE_WITH_PROMOTION: return TEXT("PROMOTION");
		default: return TEXT("?");
		}
	}

	struct FConnectionCase
	{
		const char* Name;
		FEdGraphPinType Output;
		FEdGraphPinType Input;
		ECanCreateConnectionResponse Response;
		const char* Message;
		bool bFatal = false;
	};

	UObject* Actor() { return EngineClass(TEXT("Actor")); }
	UObject* Pawn() { return EngineClass(TEXT("Pawn")); }
	UObject* Character() { return EngineClass(TEXT("Character")); }
	UObject* NavAgent() { return EngineClass(TEXT("NavAgentInterface")); }
	UObject* InputEvent() { return FindType(TEXT("/Script/Engine.EInputEvent")); }
	UObject* VectorStruct() { return TBaseStructure<FVector>::Get(); }
	UObject* RotatorStruct() { return TBaseStructure<FRotator>::Get(); }
	UObject* TransformStruct() { return TBaseStructure<FTransform>::Get(); }

	TArray<FConnectionCase> ConnectionCases()
	{
		const FEdGraphPinType Exec = Type(K2::PC_Exec);
		const FEdGraphPinType Int = Type(K2::PC_Int);
		const FEdGraphPinType Int64 = Type(K2::PC_Int64);
		const FEdGraphPinType Bool = Type(K2::PC_Boolean);
		const FEdGraphPinType Byte = Type(K2::PC_Byte);
		const FEdGraphPinType String = Type(K2::PC_String);
		const FEdGraphPinType Name = Type(K2::PC_Name);
		const FEdGraphPinType Float = Real(K2::PC_Float);
		const FEdGraphPinType Double = Real(K2::PC_Double);
		const FEdGraphPinType Wildcard = Type(K2::PC_Wildcard);
		const FEdGraphPinType IndexWildcard = Type(K2::PC_Wildcard, nullptr, K2::PSC_Index);
		const FEdGraphPinType ActorRef = Type(K2::PC_Object, Actor());
		const FEdGraphPinType PawnRef = Type(K2::PC_Object, Pawn());
		const FEdGraphPinType CharacterRef = Type(K2::PC_Object, Character());
		const FEdGraphPinType ObjectRef = Type(K2::PC_Object, UObject::StaticClass());
		const FEdGraphPinType ActorClass = Type(K2::PC_Class, Actor());
		const FEdGraphPinType SoftActor = Type(K2::PC_SoftObject, Actor());
		const FEdGraphPinType NavAgentRef = Type(K2::PC_Interface, NavAgent());
		const FEdGraphPinType Enum = Type(K2::PC_Byte, InputEvent());
		const FEdGraphPinType Vector = Type(K2::PC_Struct, VectorStruct());
		const FEdGraphPinType Rotator = Type(K2::PC_Struct, RotatorStruct());
		const FEdGraphPinType Transform = Type(K2::PC_Struct, TransformStruct());

		return {
			{ "exec to exec", Exec, Exec, CONNECT_RESPONSE_MAKE, "" },
			{ "exec to data", Exec, Int, CONNECT_RESPONSE_DISALLOW, "Exec is not compatible with Integer.", true },
			{ "data to exec", Int, Exec, CONNECT_RESPONSE_DISALLOW, "Integer is not compatible with Exec.", true },
			{ "same type", Int, Int, CONNECT_RESPONSE_MAKE, "" },
			{ "single to double precision", Float, Double, CONNECT_RESPONSE_MAKE, "" },
			{ "double to single precision", Double, Float, CONNECT_RESPONSE_MAKE, "" },
			{ "string to integer", String, Int, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert String to Integer" },
			{ "text to integer", Type(K2::PC_Text), Int, CONNECT_RESPONSE_DISALLOW, "Text is not compatible with Integer.", true },
			{ "integer to double", Int, Double, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Integer to Float (double-precision)" },
			{ "integer to int64", Int, Int64, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Integer to Integer64" },
			{ "integer to string", Int, String, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Integer to String" },
			{ "bool to string", Bool, String, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Boolean to String" },
			{ "name to string", Name, String, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Name to String" },
			{ "byte to integer", Byte, Int, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Byte to Integer" },
			{ "subclass into its parent", CharacterRef, ActorRef, CONNECT_RESPONSE_MAKE, "" },
			{ "anything into Object", PawnRef, ObjectRef, CONNECT_RESPONSE_MAKE, "" },
			{ "parent into a subclass", ActorRef, PawnRef, CONNECT_RESPONSE_DISALLOW, "Actor Object Reference is not compatible with Pawn Object Reference.", true },
			{ "implementer into its interface", PawnRef, NavAgentRef, CONNECT_RESPONSE_MAKE, "" },
			{ "inherited implementation", CharacterRef, NavAgentRef, CONNECT_RESPONSE_MAKE, "" },
			{ "non-implementer into an interface", ActorRef, NavAgentRef, CONNECT_RESPONSE_DISALLOW, "Actor Object Reference is not compatible with Nav Agent Interface Interface.", true },
			{ "interface into Object", NavAgentRef, ObjectRef, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Nav Agent Interface Interface to Object Reference" },
			{ "interface into an implementing class", NavAgentRef, PawnRef, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Nav Agent Interface Interface to Pawn Object Reference" },
			{ "object to its class", ActorRef, ActorClass, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Actor Object Reference to Actor Class Reference" },
			{ "object to string", ActorRef, String, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Actor Object Reference to String" },
			{ "class to string", ActorClass, String, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Actor Class Reference to String" },
			{ "soft to hard reference", SoftActor, ActorRef, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Actor Soft Object Reference to Actor Object Reference" },
			{ "same struct", Vector, Vector, CONNECT_RESPONSE_MAKE, "" },
			{ "unrelated structs", Transform, Rotator, CONNECT_RESPONSE_DISALLOW, "Only exactly matching structures are considered compatible.", true },
			{ "rotator to vector", Rotator, Vector, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Rotator to Vector" },
			{ "rotator to transform", Rotator, Transform, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Rotator to Transform" },
			{ "array to array", ArrayOf(Int), ArrayOf(Int), CONNECT_RESPONSE_MAKE, "" },
			{ "array to single", ArrayOf(Int), Int, CONNECT_RESPONSE_DISALLOW, "Array of Integers is not compatible with Integer.", true },
			{ "single to array", Int, ArrayOf(Int), CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Integer to Array of Integers" },
			{ "set to array", SetOf(Int), ArrayOf(Int), CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Set of Integers to Array of Integers" },
			{ "array to set", ArrayOf(Int), SetOf(Int), CONNECT_RESPONSE_DISALLOW, "Array of Integers is not compatible with Set of Integers.", true },
			{ "maps of the same types", MapOf(String, Int), MapOf(String, Int), CONNECT_RESPONSE_MAKE, "" },
			{ "maps with other values", MapOf(String, Int), MapOf(String, Bool), CONNECT_RESPONSE_DISALLOW, "Map of Strings to Integers is not compatible with Map of Strings to Booleans.", true },
			{ "value into wildcard", Int, Wildcard, CONNECT_RESPONSE_MAKE, "" },
			{ "wildcard into value", Wildcard, ActorRef, CONNECT_RESPONSE_MAKE, "" },
			{ "array into plain wildcard", ArrayOf(Int), Wildcard, CONNECT_RESPONSE_MAKE, "" },
			{ "exec into wildcard", Exec, Wildcard, CONNECT_RESPONSE_MAKE, "" },
			{ "bool into index wildcard", Bool, IndexWildcard, CONNECT_RESPONSE_MAKE, "" },
			{ "enum into index wildcard", Enum, IndexWildcard, CONNECT_RESPONSE_MAKE, "" },
			{ "string into index wildcard", String, IndexWildcard, CONNECT_RESPONSE_DISALLOW, "String is not compatible with Index Wildcard.", true },
			{ "enum into byte", Enum, Byte, CONNECT_RESPONSE_MAKE, "" },
			{ "byte into enum", Byte, Enum, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert Byte to EInputEvent Enum" },
			{ "enum to name", Enum, Name, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert EInputEvent Enum to Name" },
			{ "enum to string", Enum, String, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE, "Convert EInputEvent Enum to String" },
		};
	}

	class K2Connections : public FK2GraphFixture
	{
	protected:
		/** Two fresh nodes, one output pin and one input pin. */
		void MakePair(const FEdGraphPinType& OutputType, const FEdGraphPinType& InputType)
		{
			Source = AddNode();
			Target = AddNode();
			Out = AddPin(Source, EGPD_Output, OutputType, TEXT("ReturnValue"));
			In = AddPin(Target, EGPD_Input, InputType, TEXT("Target"));
		}

		UK2TestNode* Source = nullptr;
		UK2TestNode* Target = nullptr;
		UEdGraphPin* Out = nullptr;
		UEdGraphPin* In = nullptr;
	};
}

TEST_F(K2Connections, MatrixOfPinTypesGivesTheEditorsAnswers)
{
	ASSERT_NE(Actor(), nullptr);
	ASSERT_NE(NavAgent(), nullptr);
	ASSERT_NE(InputEvent(), nullptr);
	for (const FConnectionCase& Case : ConnectionCases())
	{
		SCOPED_TRACE(Case.Name);
		MakePair(Case.Output, Case.Input);
		const FPinConnectionResponse Response = Schema->CanCreateConnection(Out, In);
		EXPECT_EQ(U8(ResponseName(Response.Response)), U8(ResponseName(Case.Response)));
		EXPECT_EQ(U8(Response.Message), Case.Message);
		EXPECT_EQ(Response.IsFatal(), Case.bFatal);

		// The answer does not depend on which pin is named first.
		const FPinConnectionResponse Reversed = Schema->CanCreateConnection(In, Out);
		EXPECT_EQ(Reversed.Response, Response.Response);
	}
}

TEST_F(K2Connections, AClassIntoAnObjectInputIsRefusedButNotFatally)
{
	MakePair(Type(UEdGraphSchema_K2::PC_Class, Actor()), Type(UEdGraphSchema_K2::PC_Object, Actor()));
	const FPinConnectionResponse Response = Schema->CanCreateConnection(Out, In);
	EXPECT_EQ(Response.Response, CONNECT_RESPONSE_DISALLOW);
	EXPECT_EQ(U8(Response.Message), "'ReturnValue' and 'Target' are incompatible ('ReturnValue' is an object type, and 'Target' is a reference to an object instance).");
	EXPECT_FALSE(Response.IsFatal());

	// Into an interface the same mistake is fatal.
	MakePair(Type(UEdGraphSchema_K2::PC_Class, Pawn()), Type(UEdGraphSchema_K2::PC_Interface, NavAgent()));
	EXPECT_TRUE(Schema->CanCreateConnection(Out, In).IsFatal());
}

TEST_F(K2Connections, StructuralRefusalsComeBeforeTypes)
{
	const FEdGraphPinType Int = Type(UEdGraphSchema_K2::PC_Int);
	UK2TestNode* A = AddNode();
	UK2TestNode* B = AddNode();
	UEdGraphPin* AOut = AddPin(A, EGPD_Output, Int, TEXT("Out"));
	UEdGraphPin* AIn = AddPin(A, EGPD_Input, Int, TEXT("In"));
	UEdGraphPin* BIn = AddPin(B, EGPD_Input, Int, TEXT("In"));
	UEdGraphPin* BOut = AddPin(B, EGPD_Output, Int, TEXT("Out"));

	EXPECT_EQ(U8(Schema->CanCreateConnection(AOut, AIn).Message), "Both are on the same node");
	EXPECT_EQ(U8(Schema->CanCreateConnection(AIn, BIn).Message), "Directions are not compatible");
	EXPECT_EQ(U8(Schema->CanCreateConnection(AOut, BOut).Message), "Directions are not compatible");

	BIn->bOrphanedPin = true;
	EXPECT_EQ(U8(Schema->CanCreateConnection(AOut, BIn).Message), "Cannot make new connections to orphaned pin");
	BIn->bOrphanedPin = false;

	B->Veto = TEXT("You can only cast objects/interfaces.");
	const FPinConnectionResponse Vetoed = Schema->CanCreateConnection(AOut, BIn);
	EXPECT_EQ(Vetoed.Response, CONNECT_RESPONSE_DISALLOW);
	EXPECT_EQ(U8(Vetoed.Message), "You can only cast objects/interfaces.");
	B->Veto.Reset();

	// A node that is not a Blueprint node cannot take part.
	UEdGraphNode* Plain = Graph->CreateNode(UEdGraphNode::StaticClass(), false, false);
	UEdGraphPin* PlainIn = AddPin(Plain, EGPD_Input, Int, TEXT("In"));
	EXPECT_EQ(U8(Schema->CanCreateConnection(AOut, PlainIn).Message), "Invalid nodes");

	EXPECT_EQ(Schema->CanCreateConnection(AOut, BIn).Response, CONNECT_RESPONSE_MAKE);
	EXPECT_EQ(Schema->CanCreateConnection(nullptr, BIn).Response, CONNECT_RESPONSE_DISALLOW);
}

TEST_F(K2Connections, SingleLinkPinsAskToReplaceTheirLink)
{
	const FEdGraphPinType Exec = Type(UEdGraphSchema_K2::PC_Exec);
	const FEdGraphPinType Int = Type(UEdGraphSchema_K2::PC_Int);
	UK2TestNode* A = AddNode();
	UK2TestNode* B = AddNode();
	UK2TestNode* C = AddNode();
	UEdGraphPin* AThen = AddPin(A, EGPD_Output, Exec, TEXT("then"));
	UEdGraphPin* AValue = AddPin(A, EGPD_Output, Int, TEXT("Value"));
	UEdGraphPin* BExecute = AddPin(B, EGPD_Input, Exec, TEXT("execute"));
	UEdGraphPin* BValue = AddPin(B, EGPD_Input, Int, TEXT("Value"));
	UEdGraphPin* CExecute = AddPin(C, EGPD_Input, Exec, TEXT("execute"));
	UEdGraphPin* CThen = AddPin(C, EGPD_Output, Exec, TEXT("then"));
	UEdGraphPin* CValueIn = AddPin(C, EGPD_Input, Int, TEXT("Value"));
	UEdGraphPin* CValueOut = AddPin(C, EGPD_Output, Int, TEXT("Result"));

	ASSERT_TRUE(Schema->TryCreateConnection(AThen, BExecute));
	ASSERT_TRUE(Schema->TryCreateConnection(AValue, BValue));

	// An exec output leads to one place.
	FPinConnectionResponse Response = Schema->CanCreateConnection(AThen, CExecute);
	EXPECT_EQ(Response.Response, CONNECT_RESPONSE_BREAK_OTHERS_A);
	EXPECT_EQ(U8(Response.Message), "Replace existing output connections");
	EXPECT_EQ(Schema->CanCreateConnection(CExecute, AThen).Response, CONNECT_RESPONSE_BREAK_OTHERS_B);

	// A data input reads one value.
	Response = Schema->CanCreateConnection(CValueOut, BValue);
	EXPECT_EQ(Response.Response, CONNECT_RESPONSE_BREAK_OTHERS_B);
	EXPECT_EQ(U8(Response.Message), "Replace existing input connections");
	EXPECT_EQ(Schema->CanCreateConnection(BValue, CValueOut).Response, CONNECT_RESPONSE_BREAK_OTHERS_A);

	// Exec inputs and data outputs take any number of links.
	EXPECT_EQ(Schema->CanCreateConnection(CThen, BExecute).Response, CONNECT_RESPONSE_MAKE);
	EXPECT_EQ(Schema->CanCreateConnection(AValue, CValueIn).Response, CONNECT_RESPONSE_MAKE);

	// Replacing moves the link.
	ASSERT_TRUE(Schema->TryCreateConnection(AThen, CExecute));
	EXPECT_EQ(AThen->LinkedTo.Num(), 1);
	EXPECT_EQ(AThen->LinkedTo[0], CExecute);
	EXPECT_EQ(BExecute->LinkedTo.Num(), 0);
}

TEST_F(K2Connections, LinkingAnAlreadyLinkedPairReplacesItWithItself)
{
	// The editor has no separate rule for a pair that is already linked: the single-link rules answer, and the
	// pair ends up linked once.
	const FEdGraphPinType Exec = Type(UEdGraphSchema_K2::PC_Exec);
	const FEdGraphPinType Int = Type(UEdGraphSchema_K2::PC_Int);
	UK2TestNode* A = AddNode();
	UK2TestNode* B = AddNode();
	UEdGraphPin* AThen = AddPin(A, EGPD_Output, Exec, TEXT("then"));
	UEdGraphPin* AValue = AddPin(A, EGPD_Output, Int, TEXT("Value"));
	UEdGraphPin* BExecute = AddPin(B, EGPD_Input, Exec, TEXT("execute"));
	UEdGraphPin* BValue = AddPin(B, EGPD_Input, Int, TEXT("Value"));
	ASSERT_TRUE(Schema->TryCreateConnection(AThen, BExecute));
	ASSERT_TRUE(Schema->TryCreateConnection(AValue, BValue));

	EXPECT_EQ(Schema->CanCreateConnection(AThen, BExecute).Response, CONNECT_RESPONSE_BREAK_OTHERS_A);
	EXPECT_EQ(Schema->CanCreateConnection(AValue, BValue).Response, CONNECT_RESPONSE_BREAK_OTHERS_B);
	EXPECT_TRUE(Schema->TryCreateConnection(AThen, BExecute));
	EXPECT_TRUE(Schema->TryCreateConnection(BValue, AValue));
	EXPECT_EQ(AThen->LinkedTo.Num(), 1);
	EXPECT_EQ(BExecute->LinkedTo.Num(), 1);
	EXPECT_EQ(AValue->LinkedTo.Num(), 1);
	EXPECT_EQ(BValue->LinkedTo.Num(), 1);
}

TEST_F(K2Connections, ASelfPinOfAMultiTargetNodeTakesSeveralObjects)
{
	const FEdGraphPinType PawnRef = Type(UEdGraphSchema_K2::PC_Object, Pawn());
	UK2TestNode* First = AddNode();
	UK2TestNode* Second = AddNode();
	UK2TestNode* Call = AddNode();
	UEdGraphPin* FirstOut = AddPin(First, EGPD_Output, PawnRef, TEXT("Out"));
	UEdGraphPin* SecondOut = AddPin(Second, EGPD_Output, PawnRef, TEXT("Out"));
	UEdGraphPin* ArrayOut = AddPin(Second, EGPD_Output, ArrayOf(PawnRef), TEXT("Many"));
	UEdGraphPin* Self = AddPin(Call, EGPD_Input, PawnRef, TEXT("self"));
	ASSERT_TRUE(Schema->TryCreateConnection(FirstOut, Self));

	EXPECT_EQ(Schema->CanCreateConnection(SecondOut, Self).Response, CONNECT_RESPONSE_BREAK_OTHERS_B);
	Call->bMultipleSelfs = true;
	EXPECT_EQ(Schema->CanCreateConnection(SecondOut, Self).Response, CONNECT_RESPONSE_MAKE);
	// An array into the single self pin is accepted (the call runs per element), but only alone.
	EXPECT_EQ(Schema->CanCreateConnection(ArrayOut, Self).Response, CONNECT_RESPONSE_BREAK_OTHERS_B);
	Self->BreakAllPinLinks();
	EXPECT_EQ(Schema->CanCreateConnection(ArrayOut, Self).Response, CONNECT_RESPONSE_MAKE);
	ASSERT_TRUE(Schema->TryCreateConnection(ArrayOut, Self));
	EXPECT_EQ(Schema->CanCreateConnection(FirstOut, Self).Response, CONNECT_RESPONSE_BREAK_OTHERS_B);
	Call->bMultipleSelfs = false;
	EXPECT_EQ(Schema->CanCreateConnection(ArrayOut, Self).Response, CONNECT_RESPONSE_DISALLOW);
}

TEST_F(K2Connections, ConversionsInsertTheLibraryCallOrFailWithAReason)
{
	MakePair(Type(UEdGraphSchema_K2::PC_Int), Type(UEdGraphSchema_K2::PC_String));
	const int32 NodesBefore = Graph->Nodes.Num();
	EXPECT_TRUE(Schema->TryCreateConnection(Out, In)) << U8(Schema->GetLastConversionFailureReason());
	EXPECT_EQ(Graph->Nodes.Num(), NodesBefore + 1);
	ASSERT_EQ(Out->LinkedTo.Num(), 1);
	ASSERT_EQ(In->LinkedTo.Num(), 1);
	EXPECT_EQ(Out->LinkedTo[0]->GetOwningNode(), In->LinkedTo[0]->GetOwningNode());
	EXPECT_EQ(U8(Out->LinkedTo[0]->GetOwningNode()->GetClass()->GetName()), "K2Node_CallFunction");

	MakePair(Type(UEdGraphSchema_K2::PC_Text), Type(UEdGraphSchema_K2::PC_Int));
	EXPECT_EQ(Schema->CanCreateConnection(Out, In).Response, CONNECT_RESPONSE_DISALLOW);
	EXPECT_FALSE(Schema->TryCreateConnection(Out, In));
	EXPECT_EQ(In->LinkedTo.Num(), 0);
	EXPECT_EQ(Graph->Nodes.Num(), NodesBefore + 3);
}

TEST_F(K2Connections, AutocastSearchNamesTheLibraryFunction)
{
	struct FAutocastCase
	{
		FEdGraphPinType Output;
		FEdGraphPinType Input;
		const char* Function;
		const char* Owner;
	};
	const FAutocastCase Cases[] = {
		{ Type(UEdGraphSchema_K2::PC_Int), Real(UEdGraphSchema_K2::PC_Double), "Conv_IntToDouble", "KismetMathLibrary" },
		// Single precision reads as its double-precision twin.
		{ Type(UEdGraphSchema_K2::PC_Int), Real(UEdGraphSchema_K2::PC_Float), "Conv_IntToDouble", "KismetMathLibrary" },
		{ Real(UEdGraphSchema_K2::PC_Double), Type(UEdGraphSchema_K2::PC_String), "Conv_DoubleToString", "KismetStringLibrary" },
		{ Type(UEdGraphSchema_K2::PC_Int), Type(UEdGraphSchema_K2::PC_Text), "Conv_IntToText", "KismetTextLibrary" },
		{ SetOf(Type(UEdGraphSchema_K2::PC_Int)), ArrayOf(Type(UEdGraphSchema_K2::PC_Int)), "Set_ToArray", "BlueprintSetLibrary" },
		{ Type(UEdGraphSchema_K2::PC_Object, Pawn()), Type(UEdGraphSchema_K2::PC_Class, Actor()), "GetObjectClass", "GameplayStatics" },
		{ Type(UEdGraphSchema_K2::PC_Struct, RotatorStruct()), Type(UEdGraphSchema_K2::PC_Struct, TransformStruct()), "MakeTransform", "KismetMathLibrary" },
	};
	for (const FAutocastCase& Case : Cases)
	{
		SCOPED_TRACE(Case.Function);
		const TOptional<UEdGraphSchema_K2::FSearchForAutocastFunctionResults> Found = Schema->SearchForAutocastFunction(Case.Output, Case.Input);
		ASSERT_TRUE(Found.IsSet());
		EXPECT_EQ(U8(Found->TargetFunction.ToString()), Case.Function);
		ASSERT_NE(Found->FunctionOwner, nullptr);
		EXPECT_EQ(U8(Found->FunctionOwner->GetName()), Case.Owner);
	}
	// A class of the wrong branch has no class to give.
	EXPECT_FALSE(Schema->SearchForAutocastFunction(Type(UEdGraphSchema_K2::PC_Object, Actor()), Type(UEdGraphSchema_K2::PC_Class, Pawn())).IsSet());
	EXPECT_FALSE(Schema->SearchForAutocastFunction(Type(UEdGraphSchema_K2::PC_Text), Type(UEdGraphSchema_K2::PC_Int)).IsSet());
}
