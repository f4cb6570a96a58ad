#include "K2TestTypes.h"

#include "K2Node_CallFunction.h"
#include "K2Node_CastByteToEnum.h"
#include "K2Node_ConvertAsset.h"
#include "K2Node_GetEnumeratorName.h"
#include "K2Node_GetEnumeratorNameAsString.h"
#include "K2Node_VariableGet.h"
#include "Kismet2/CompilerResultsLog.h"
#include "UObject/Class.h"

using namespace K2Test;

namespace
{
	using K2 = UEdGraphSchema_K2;

	UObject* Actor() { return EngineClass(TEXT("Actor")); }
	UObject* Pawn() { return EngineClass(TEXT("Pawn")); }
	UObject* InputEvent() { return FindType(TEXT("/Script/Engine.EInputEvent")); }
	UObject* SpawnCollision() { return FindType(TEXT("/Script/Engine.ESpawnActorCollisionHandlingMethod")); }

	/** "name:direction:category<object>" per pin, in order. */
	std::string DescribePins(const UEdGraphNode* Node)
	{
		std::string Result;
		for (const UEdGraphPin* Pin : Node->Pins)
		{
			Result += (Result.empty() ? "" : ", ") + U8(Pin->PinName.ToString()) + (Pin->Direction == EGPD_Input ? ":in:" : ":out:") + U8(Pin->PinType.PinCategory.ToString());
			if (const UObject* Object = Pin->PinType.PinSubCategoryObject.Get())
			{
				Result += "<" + U8(Object->GetName()) + ">";
			}
		}
		return Result;
	}

	class NodesCConversions : public FK2GraphFixture
	{
	protected:
		void MakePair(const FEdGraphPinType& OutputType, const FEdGraphPinType& InputType)
		{
			Source = AddNode();
			Target = AddNode();
			Target->NodePosX = 400;
			Target->NodePosY = 200;
			Out = AddPin(Source, EGPD_Output, OutputType, TEXT("ReturnValue"));
			In = AddPin(Target, EGPD_Input, InputType, TEXT("Target"));
		}

		/** The node both pins were wired to, if a single one was put between them. */
		UEdGraphNode* InsertedNode() const
		{
			if (Out->LinkedTo.Num() != 1 || In->LinkedTo.Num() != 1)
			{
				return nullptr;
			}
			UEdGraphNode* Node = Out->LinkedTo[0]->GetOwningNode();
			return Node == In->LinkedTo[0]->GetOwningNode() ? Node : nullptr;
		}

		UK2TestNode* Source = nullptr;
		UK2TestNode* Target = nullptr;
		UEdGraphPin* Out = nullptr;
		UEdGraphPin* In = nullptr;
	};

	struct FConversionCase
	{
		const char* Name;
		FEdGraphPinType Output;
		FEdGraphPinType Input;
		const char* NodeClass;
		const char* Title;
		const char* Pins;
	};
}

TEST_F(NodesCConversions, WiringThroughAConversionInsertsTheEditorsNode)
{
	ASSERT_NE(InputEvent(), nullptr);
	const FConversionCase Cases[] = {
		{ "enum to name", Type(K2::PC_Byte, InputEvent()), Type(K2::PC_Name), "K2Node_GetEnumeratorName", "Enum to Name",
			"Enumerator:in:byte<EInputEvent>, ReturnValue:out:name" },
		{ "enum to string", Type(K2::PC_Byte, InputEvent()), Type(K2::PC_String), "K2Node_GetEnumeratorNameAsString", "Enum to String",
			"Enumerator:in:byte<EInputEvent>, ReturnValue:out:string" },
		{ "byte to enum", Type(K2::PC_Byte), Type(K2::PC_Byte, InputEvent()), "K2Node_CastByteToEnum", "Byte to Enum EInputEvent",
			"Byte:in:byte, ReturnValue:out:byte<EInputEvent>" },
		{ "soft object to object", Type(K2::PC_SoftObject, Actor()), Type(K2::PC_Object, Actor()), "K2Node_ConvertAsset", "Resolve Soft Reference",
			"Input:in:softobject<Actor>, Output:out:object<Actor>" },
		{ "object to soft object of a parent", Type(K2::PC_Object, Pawn()), Type(K2::PC_SoftObject, Actor()), "K2Node_ConvertAsset", "Make Soft Reference",
			"Input:in:object<Pawn>, Output:out:softobject<Pawn>" },
		{ "soft class to class", Type(K2::PC_SoftClass, Pawn()), Type(K2::PC_Class, Actor()), "K2Node_ConvertAsset", "Resolve Soft Reference",
			"Input:in:softclass<Pawn>, Output:out:class<Pawn>" },
		{ "class to soft class", Type(K2::PC_Class, Actor()), Type(K2::PC_SoftClass, Actor()), "K2Node_ConvertAsset", "Make Soft Reference",
			"Input:in:class<Actor>, Output:out:softclass<Actor>" },
	};
	for (const FConversionCase& Case : Cases)
	{
		SCOPED_TRACE(Case.Name);
		MakePair(Case.Output, Case.Input);
		const FPinConnectionResponse Response = Schema->CanCreateConnection(Out, In);
		EXPECT_EQ(Response.Response, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE) << U8(Response.Message);

		const int32 NodesBefore = Graph->Nodes.Num();
		ASSERT_TRUE(Schema->TryCreateConnection(Out, In)) << U8(Schema->GetLastConversionFailureReason());
		EXPECT_EQ(Graph->Nodes.Num(), NodesBefore + 1);
		const UEdGraphNode* Inserted = InsertedNode();
		ASSERT_NE(Inserted, nullptr);
		EXPECT_EQ(U8(Inserted->GetClass()->GetName()), Case.NodeClass);
		EXPECT_EQ(U8(Inserted->GetNodeTitle(ENodeTitleType::FullTitle)), Case.Title);
		EXPECT_EQ(DescribePins(Inserted), Case.Pins);
		EXPECT_TRUE(CastChecked<UK2Node>(Inserted)->IsNodePure());
		// Half way between the two nodes, on the grid.
		EXPECT_EQ(Inserted->NodePosX, 208);
		EXPECT_EQ(Inserted->NodePosY, 96);
	}
}

TEST_F(NodesCConversions, ReferencesOfUnrelatedClassesHaveNoConversion)
{
	const std::pair<FEdGraphPinType, FEdGraphPinType> Pairs[] = {
		{ Type(K2::PC_SoftObject, Actor()), Type(K2::PC_Object, Pawn()) },
		{ Type(K2::PC_Class, Actor()), Type(K2::PC_SoftClass, Pawn()) },
		{ ArrayOf(Type(K2::PC_Byte, InputEvent())), Type(K2::PC_Name) },
	};
	for (const auto& [Output, Input] : Pairs)
	{
		SCOPED_TRACE(U8(UEdGraphSchema_K2::TypeToText(Output)) + " -> " + U8(UEdGraphSchema_K2::TypeToText(Input)));
		MakePair(Output, Input);
		EXPECT_EQ(Schema->CanCreateConnection(Out, In).Response, CONNECT_RESPONSE_DISALLOW);
		EXPECT_FALSE(Schema->FindSpecializedConversionNode(Output, *In, true).IsSet());
	}
}

TEST_F(NodesCConversions, AnObjectReachesACallTargetThroughItsMember)
{
	// A character wired into a scene component's function goes through a read of its first component member.
	UFunction* GetLocation = CastChecked<UClass>(EngineClass(TEXT("SceneComponent")))->FindFunctionByName(TEXT("K2_GetComponentLocation"));
	ASSERT_NE(GetLocation, nullptr);
	UK2Node_CallFunction* Call = static_cast<UK2Node_CallFunction*>(Graph->CreateNode(UK2Node_CallFunction::StaticClass(), false, false));
	Call->SetFromFunction(GetLocation);
	Call->AllocateDefaultPins();
	UEdGraphPin* SelfPin = Schema->FindSelfPin(*Call, EGPD_Input);
	ASSERT_NE(SelfPin, nullptr);
	Source = AddNode();
	Out = AddPin(Source, EGPD_Output, Type(K2::PC_Object, EngineClass(TEXT("Character"))), TEXT("ReturnValue"));

	const FPinConnectionResponse Response = Schema->CanCreateConnection(Out, SelfPin);
	EXPECT_EQ(Response.Response, CONNECT_RESPONSE_MAKE_WITH_CONVERSION_NODE) << U8(Response.Message);
	ASSERT_TRUE(Schema->TryCreateConnection(Out, SelfPin)) << U8(Schema->GetLastConversionFailureReason());
	ASSERT_EQ(Out->LinkedTo.Num(), 1);
	const UK2Node_VariableGet* Get = Cast<UK2Node_VariableGet>(Out->LinkedTo[0]->GetOwningNode());
	ASSERT_NE(Get, nullptr);
	ASSERT_EQ(SelfPin->LinkedTo.Num(), 1);
	EXPECT_EQ(SelfPin->LinkedTo[0]->GetOwningNode(), Get);
	const FObjectProperty* Member = CastField<FObjectProperty>(Get->GetPropertyForVariable());
	ASSERT_NE(Member, nullptr);
	EXPECT_EQ(U8(Member->GetName()), "Mesh");
	EXPECT_EQ(Member->GetOwnerClass(), EngineClass(TEXT("Character")));
}

TEST_F(NodesCConversions, ConversionNodesRefuseWhatTheyCannotConvert)
{
	// Enum to Name reads entry names: a plain byte has none.
	UK2Node_GetEnumeratorName* ToName = static_cast<UK2Node_GetEnumeratorName*>(Graph->CreateNode(UK2Node_GetEnumeratorName::StaticClass(), false, false));
	ToName->AllocateDefaultPins();
	Source = AddNode();
	UEdGraphPin* PlainByte = AddPin(Source, EGPD_Output, Type(K2::PC_Byte), TEXT("Byte"));
	UEdGraphPin* EnumValue = AddPin(Source, EGPD_Output, Type(K2::PC_Byte, InputEvent()), TEXT("Event"));
	const FPinConnectionResponse Refused = Schema->CanCreateConnection(PlainByte, ToName->FindPin(UK2Node_GetEnumeratorName::EnumeratorPinName));
	EXPECT_EQ(Refused.Response, CONNECT_RESPONSE_DISALLOW);
	EXPECT_EQ(U8(Refused.Message), "Input is not an Enum.");
	// Wired to an enum, the input takes that enum's type.
	ASSERT_TRUE(Schema->TryCreateConnection(EnumValue, ToName->FindPin(UK2Node_GetEnumeratorName::EnumeratorPinName)));
	EXPECT_EQ(ToName->FindPin(UK2Node_GetEnumeratorName::EnumeratorPinName)->PinType.PinSubCategoryObject.Get(), InputEvent());
	EXPECT_EQ(ToName->GetConnectedEnum(), InputEvent());

	// Byte to Enum gives its own enum only.
	UK2Node_CastByteToEnum* ToEnum = static_cast<UK2Node_CastByteToEnum*>(Graph->CreateNode(UK2Node_CastByteToEnum::StaticClass(), false, false));
	ToEnum->Enum = CastChecked<UEnum>(InputEvent());
	ToEnum->AllocateDefaultPins();
	Target = AddNode();
	UEdGraphPin* OtherEnumInput = AddPin(Target, EGPD_Input, Type(K2::PC_Byte, SpawnCollision()), TEXT("Method"));
	UEdGraphPin* SameEnumInput = AddPin(Target, EGPD_Input, Type(K2::PC_Byte, InputEvent()), TEXT("Event"));
	EXPECT_EQ(Schema->CanCreateConnection(ToEnum->FindPin(UEdGraphSchema_K2::PN_ReturnValue), OtherEnumInput).Response, CONNECT_RESPONSE_DISALLOW);
	EXPECT_EQ(Schema->CanCreateConnection(ToEnum->FindPin(UEdGraphSchema_K2::PN_ReturnValue), SameEnumInput).Response, CONNECT_RESPONSE_MAKE);

	// The soft reference node takes references only.
	UK2Node_ConvertAsset* Convert = static_cast<UK2Node_ConvertAsset*>(Graph->CreateNode(UK2Node_ConvertAsset::StaticClass(), false, false));
	Convert->AllocateDefaultPins();
	UEdGraphPin* Number = AddPin(Source, EGPD_Output, Type(K2::PC_Int), TEXT("Number"));
	EXPECT_EQ(Schema->CanCreateConnection(Number, Convert->GetInputPin()).Response, CONNECT_RESPONSE_DISALLOW);
	EXPECT_EQ(U8(Convert->GetNodeTitle(ENodeTitleType::FullTitle)), "Resolve Soft Reference");
}

TEST_F(NodesCConversions, CompilingReportsConversionsWithoutAnEnum)
{
	UK2Node_CastByteToEnum* ToEnum = static_cast<UK2Node_CastByteToEnum*>(Graph->CreateNode(UK2Node_CastByteToEnum::StaticClass(), false, false));
	ToEnum->AllocateDefaultPins();
	UK2Node_GetEnumeratorName* ToName = static_cast<UK2Node_GetEnumeratorName*>(Graph->CreateNode(UK2Node_GetEnumeratorName::StaticClass(), false, false));
	ToName->AllocateDefaultPins();

	FCompilerResultsLog Log;
	ToEnum->ValidateNodeDuringCompilation(Log);
	// Not wired anywhere, Enum to Name is not worth a complaint yet.
	ToName->ValidateNodeDuringCompilation(Log);
	Target = AddNode();
	ASSERT_TRUE(Schema->TryCreateConnection(ToName->FindPin(UEdGraphSchema_K2::PN_ReturnValue), AddPin(Target, EGPD_Input, Type(K2::PC_Name), TEXT("Name"))));
	ToName->ValidateNodeDuringCompilation(Log);

	ASSERT_EQ(Log.Messages.Num(), 2);
	EXPECT_EQ(U8(Log.Messages[0]->ToText()), "Undefined Enum in Byte to Enum (bad enum)");
	EXPECT_EQ(U8(Log.Messages[1]->ToText()), "Enum to Name Must have non-default Enum input");
	EXPECT_EQ(Log.NumErrors, 2);
}
