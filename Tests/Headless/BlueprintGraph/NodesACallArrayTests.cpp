#include "NodesATestUtils.h"

#include "K2Node_CallArrayFunction.h"
#include "K2Node_VariableGet.h"
#include "UObject/UnrealType.h"

using namespace NodesATest;

namespace
{
	const TCHAR* const ActorPath = TEXT("/Script/Engine.Actor");
	const TCHAR* const ArrayLibraryPath = TEXT("/Script/Engine.KismetArrayLibrary");

	class NodesACallArray : public FBlueprintFixture
	{
	protected:
		UK2Node_CallArrayFunction* PlaceArrayCall(const TCHAR* FunctionName)
		{
			UFunction* Function = FindFunction(ArrayLibraryPath, FunctionName);
			EXPECT_NE(Function, nullptr) << U8(FString(FunctionName));
			return Place<UK2Node_CallArrayFunction>(EventGraph, [Function](UK2Node_CallArrayFunction& Node) { Node.SetFromFunction(Function); });
		}

		UK2Node_VariableGet* PlaceTags()
		{
			UClass* Actor = FindClass(ActorPath);
			FProperty* Tags = Actor->FindPropertyByName(TEXT("Tags"));
			EXPECT_NE(Tags, nullptr);
			return Place<UK2Node_VariableGet>(EventGraph, [Tags](UK2Node_VariableGet& Node) { Node.SetFromProperty(Tags, true, nullptr); });
		}
	};
}

TEST_F(NodesACallArray, ArrayAndDependentPinsTakeTheWiredElementType)
{
	MakeBlueprint(FindClass(ActorPath));
	UK2Node_CallArrayFunction* Add = PlaceArrayCall(TEXT("Array_Add"));
	EXPECT_EQ(DescribePins(Add), "execute:in:exec, then:out:exec, self:in:object (hidden), TargetArray:in:wildcard, NewItem:in:wildcard, ReturnValue:out:int");
	UEdGraphPin* TargetArray = Add->GetTargetArrayPin();
	ASSERT_NE(TargetArray, nullptr);
	EXPECT_EQ(U8(TargetArray->PinName), "TargetArray");
	EXPECT_TRUE(TargetArray->PinType.IsArray());
	EXPECT_TRUE(TargetArray->PinType.bIsReference);
	EXPECT_EQ(U8(Add->GetNodeTitle(ENodeTitleType::FullTitle)), "Add");
	EXPECT_EQ(U8(Add->GetCompactNodeTitle()), "ADD");

	const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
	UK2Node_VariableGet* Tags = PlaceTags();
	ASSERT_NE(Tags->GetValuePin(), nullptr);
	ASSERT_TRUE(Schema->TryCreateConnection(Tags->GetValuePin(), TargetArray));
	EXPECT_EQ(U8(TargetArray->PinType.PinCategory), "name");
	EXPECT_TRUE(TargetArray->PinType.IsArray());
	const UEdGraphPin* NewItem = Add->FindPinChecked(TEXT("NewItem"));
	EXPECT_EQ(U8(NewItem->PinType.PinCategory), "name");
	EXPECT_FALSE(NewItem->PinType.IsContainer());
	EXPECT_EQ(U8(NewItem->DefaultValue), "None");

	// The typed pins survive a reconstruction through their wire.
	Add->ReconstructNode();
	EXPECT_EQ(U8(Add->GetTargetArrayPin()->PinType.PinCategory), "name");
	EXPECT_EQ(U8(Add->FindPinChecked(TEXT("NewItem"))->PinType.PinCategory), "name");

	// Unwired, everything is a wildcard again.
	Schema->BreakPinLinks(*Add->GetTargetArrayPin(), true);
	EXPECT_EQ(U8(Add->GetTargetArrayPin()->PinType.PinCategory), "wildcard");
	EXPECT_EQ(U8(Add->FindPinChecked(TEXT("NewItem"))->PinType.PinCategory), "wildcard");
}

TEST_F(NodesACallArray, AnItemWiredFirstTypesTheArray)
{
	MakeBlueprint(FindClass(ActorPath));
	UK2Node_CallArrayFunction* Add = PlaceArrayCall(TEXT("Array_Add"));
	UK2Node_CallFunction* Name = Place<UK2Node_CallFunction>(EventGraph, [](UK2Node_CallFunction& Node)
	{
		Node.SetFromFunction(FindFunction(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("GetDisplayName")));
	});
	ASSERT_TRUE(GetDefault<UEdGraphSchema_K2>()->TryCreateConnection(Name->GetReturnValuePin(), Add->FindPinChecked(TEXT("NewItem"))));
	EXPECT_EQ(U8(Add->FindPinChecked(TEXT("NewItem"))->PinType.PinCategory), "string");
	EXPECT_EQ(U8(Add->GetTargetArrayPin()->PinType.PinCategory), "string");
	EXPECT_TRUE(Add->GetTargetArrayPin()->PinType.IsArray());
	EXPECT_TRUE(UK2Node_CallArrayFunction::IsWildcardProperty(Add->GetTargetFunction(), Add->GetTargetFunction()->FindPropertyByName(TEXT("NewItem"))));
	EXPECT_FALSE(UK2Node_CallArrayFunction::IsWildcardProperty(Add->GetTargetFunction(), Add->GetTargetFunction()->GetReturnProperty()));
}

TEST_F(NodesACallArray, SetAndMapFunctionsShareTheirElementTypes)
{
	MakeBlueprint(FindClass(ActorPath));
	const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
	auto PlaceCall = [this](const TCHAR* ClassPath, const TCHAR* Name)
	{
		UFunction* Function = FindFunction(ClassPath, Name);
		EXPECT_NE(Function, nullptr) << U8(FString(Name));
		return Place<UK2Node_CallFunction>(EventGraph, [Function](UK2Node_CallFunction& Node) { Node.SetFromFunction(Function); });
	};
	UK2Node_CallFunction* SetAdd = PlaceCall(TEXT("/Script/Engine.BlueprintSetLibrary"), TEXT("Set_Add"));
	EXPECT_EQ(DescribePins(SetAdd), "execute:in:exec, then:out:exec, self:in:object (hidden), TargetSet:in:wildcard, NewItem:in:wildcard");
	UK2Node_CallFunction* Name = PlaceCall(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("GetDisplayName"));
	ASSERT_TRUE(Schema->TryCreateConnection(Name->GetReturnValuePin(), SetAdd->FindPinChecked(TEXT("NewItem"))));
	EXPECT_EQ(U8(SetAdd->FindPinChecked(TEXT("TargetSet"))->PinType.PinCategory), "string");
	EXPECT_TRUE(SetAdd->FindPinChecked(TEXT("TargetSet"))->PinType.IsSet());
	Schema->BreakPinLinks(*SetAdd->FindPinChecked(TEXT("NewItem")), true);
	EXPECT_EQ(U8(SetAdd->FindPinChecked(TEXT("TargetSet"))->PinType.PinCategory), "wildcard");

	UK2Node_CallFunction* MapAdd = PlaceCall(TEXT("/Script/Engine.BlueprintMapLibrary"), TEXT("Map_Add"));
	const UEdGraphPin* TargetMap = MapAdd->FindPinChecked(TEXT("TargetMap"));
	EXPECT_TRUE(TargetMap->PinType.IsMap());
	EXPECT_EQ(U8(TargetMap->PinType.PinCategory), "wildcard");
	ASSERT_TRUE(Schema->TryCreateConnection(Name->GetReturnValuePin(), MapAdd->FindPinChecked(TEXT("Key"))));
	EXPECT_EQ(U8(TargetMap->PinType.PinCategory), "string");
	EXPECT_EQ(U8(TargetMap->PinType.PinValueType.TerminalCategory), "wildcard");
	UK2Node_CallFunction* Valid = PlaceCall(TEXT("/Script/Engine.KismetSystemLibrary"), TEXT("IsValid"));
	ASSERT_TRUE(Schema->TryCreateConnection(Valid->GetReturnValuePin(), MapAdd->FindPinChecked(TEXT("Value"))));
	EXPECT_EQ(U8(TargetMap->PinType.PinValueType.TerminalCategory), "bool");
	EXPECT_EQ(U8(MapAdd->FindPinChecked(TEXT("Value"))->PinType.PinCategory), "bool");
}

TEST_F(NodesACallArray, WildcardParametersRefuseExecWires)
{
	MakeBlueprint(FindClass(ActorPath));
	UK2Node_CallArrayFunction* Add = PlaceArrayCall(TEXT("Array_Add"));
	UK2Node_CallArrayFunction* Other = PlaceArrayCall(TEXT("Array_Add"));
	const FPinConnectionResponse Response = GetDefault<UEdGraphSchema_K2>()->CanCreateConnection(Other->GetThenPin(), Add->FindPinChecked(TEXT("NewItem")));
	EXPECT_EQ(Response.Response, CONNECT_RESPONSE_DISALLOW);
	EXPECT_EQ(U8(Response.Message), "Cannot create a container of Exec pins.");
	EXPECT_EQ(Add->FindPinChecked(TEXT("NewItem"))->LinkedTo.Num(), 0);
}
