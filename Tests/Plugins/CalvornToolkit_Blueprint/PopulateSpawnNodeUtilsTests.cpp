// Variable nodes made without the action menu: of the Blueprint's own variables and components, and of another
// object's properties wired to the pin that supplies that object.

#include "PopulateSpawnTestSupport.h"

#include "BlueprintNodeUtils.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "K2Node_Self.h"
#include "K2Node_VariableGet.h"
#include "K2Node_VariableSet.h"

using namespace PopulateSpawnTests;

namespace
{
	const FVector2D Where(64.0, -32.0);

	class PopulateSpawnNodeUtils : public FSpawnFixture
	{
	};

	TEST_F(PopulateSpawnNodeUtils, OwnVariablesAndComponentsGiveBoundNodes)
	{
		UClass* Mesh = FindClass(TEXT("/Script/Engine.StaticMeshComponent"));
		ASSERT_NE(Mesh, nullptr);
		ASSERT_NE(Blueprint->SimpleConstructionScript, nullptr);
		USCS_Node* MeshNode = Blueprint->SimpleConstructionScript->CreateNode(Mesh, TEXT("Body"));
		Blueprint->SimpleConstructionScript->AddNode(MeshNode);
		FKismetEditorUtilities::CompileBlueprint(Blueprint);

		struct FCase
		{
			const TCHAR* Name;
			bool bSet;
			FGuid ExpectedGuid;
			std::vector<std::string> Pins;
		};
		const std::vector<FCase> Cases = {
			{TEXT("Health"), false, FBlueprintEditorUtils::FindMemberVariableGuidByName(Blueprint, TEXT("Health")), {"out:Health"}},
			{TEXT("health"), true, FBlueprintEditorUtils::FindMemberVariableGuidByName(Blueprint, TEXT("Health")), {"in:execute", "out:then", "in:Health", "out:Output_Get"}},
			{TEXT("Body"), false, MeshNode->VariableGuid, {"out:Body"}},
			// A component the native parent declares: bound to the property, with no guid to carry.
			{TEXT("RootComponent"), false, FGuid(), {"out:RootComponent"}},
		};
		for (const FCase& Case : Cases)
		{
			SCOPED_TRACE(U8(Case.Name));
			const int32 NodesBefore = Graph->Nodes.Num();
			UK2Node_Variable* Node = Case.bSet
				? static_cast<UK2Node_Variable*>(FBlueprintNodeUtils::CreateVariableSetNode(Graph, Case.Name, Where))
				: static_cast<UK2Node_Variable*>(FBlueprintNodeUtils::CreateVariableGetNode(Graph, Case.Name, Where));
			ASSERT_NE(Node, nullptr);
			EXPECT_EQ(Graph->Nodes.Num(), NodesBefore + 1);
			EXPECT_TRUE(Node->VariableReference.IsSelfContext());
			EXPECT_EQ(Node->VariableReference.GetMemberGuid(), Case.ExpectedGuid);
			EXPECT_EQ(PinNames(Node), Case.Pins);
			EXPECT_EQ(Node->NodePosX, 64);
			EXPECT_EQ(Node->NodePosY, -32);
			EXPECT_NE(Node->GetPropertyForVariable(), nullptr);
		}
	}

	TEST_F(PopulateSpawnNodeUtils, NothingIsMadeForWhatTheBlueprintDoesNotHave)
	{
		UEdGraph* Loose = MakeGraph(GetTransientPackage(), TEXT("Loose"));
		const int32 NodesBefore = Graph->Nodes.Num();
		EXPECT_EQ(FBlueprintNodeUtils::CreateVariableGetNode(Graph, TEXT("Nothing"), Where), nullptr);
		EXPECT_EQ(FBlueprintNodeUtils::CreateVariableSetNode(Graph, TEXT("Nothing"), Where), nullptr);
		EXPECT_EQ(FBlueprintNodeUtils::CreateVariableGetNode(Graph, TEXT(""), Where), nullptr);
		EXPECT_EQ(FBlueprintNodeUtils::CreateVariableGetNode(nullptr, TEXT("Health"), Where), nullptr);
		EXPECT_EQ(FBlueprintNodeUtils::CreateVariableGetNode(Loose, TEXT("Health"), Where), nullptr);
		EXPECT_EQ(Graph->Nodes.Num(), NodesBefore);
		EXPECT_EQ(Loose->Nodes.Num(), 0);
	}

	TEST_F(PopulateSpawnNodeUtils, AnotherObjectsPropertyIsReadThroughTheOwnerPin)
	{
		UBlueprint* Target = MakeTargetBlueprint();
		ASSERT_NE(Target, nullptr);
		UK2Node_Self* Owner = Place<UK2Node_Self>(Graph);
		UEdGraphPin* OwnerPin = Owner->FindPin(TEXT("self"));
		ASSERT_NE(OwnerPin, nullptr);

		struct FCase
		{
			const char* Name;
			UClass* Class;
			const TCHAR* Variable;
			bool bSet;
			FGuid ExpectedGuid;
		};
		const std::vector<FCase> Cases = {
			{"Blueprint variable", Target->GeneratedClass.Get(), TEXT("Armor"), false, FBlueprintEditorUtils::FindMemberVariableGuidByName(Target, TEXT("Armor"))},
			{"Blueprint variable, written", Target->GeneratedClass.Get(), TEXT("Armor"), true, FBlueprintEditorUtils::FindMemberVariableGuidByName(Target, TEXT("Armor"))},
			{"native property", ActorClass, TEXT("Tags"), false, FGuid()},
		};
		for (const FCase& Case : Cases)
		{
			SCOPED_TRACE(Case.Name);
			UK2Node_Variable* Node = Case.bSet
				? static_cast<UK2Node_Variable*>(FBlueprintNodeUtils::CreateCrossObjectVariableSetNode(Graph, Case.Variable, Case.Class, OwnerPin, Where))
				: static_cast<UK2Node_Variable*>(FBlueprintNodeUtils::CreateCrossObjectVariableGetNode(Graph, Case.Variable, Case.Class, OwnerPin, Where));
			ASSERT_NE(Node, nullptr);
			EXPECT_FALSE(Node->VariableReference.IsSelfContext());
			EXPECT_EQ(Node->VariableReference.GetMemberParentClass(), Case.Class);
			EXPECT_EQ(Node->VariableReference.GetMemberGuid(), Case.ExpectedGuid);
			const UEdGraphPin* SelfPin = Node->FindPin(UEdGraphSchema_K2::PN_Self);
			ASSERT_NE(SelfPin, nullptr);
			EXPECT_FALSE(SelfPin->bHidden);
			ASSERT_EQ(SelfPin->LinkedTo.Num(), 1);
			EXPECT_EQ(SelfPin->LinkedTo[0], OwnerPin);
		}
		EXPECT_EQ(OwnerPin->LinkedTo.Num(), 3);

		// Missing inputs and unknown properties make nothing.
		const int32 NodesBefore = Graph->Nodes.Num();
		EXPECT_EQ(FBlueprintNodeUtils::CreateCrossObjectVariableGetNode(Graph, TEXT("Armor"), nullptr, OwnerPin, Where), nullptr);
		EXPECT_EQ(FBlueprintNodeUtils::CreateCrossObjectVariableGetNode(Graph, TEXT("Armor"), Target->GeneratedClass, nullptr, Where), nullptr);
		EXPECT_EQ(FBlueprintNodeUtils::CreateCrossObjectVariableGetNode(Graph, TEXT(""), Target->GeneratedClass, OwnerPin, Where), nullptr);
		EXPECT_EQ(FBlueprintNodeUtils::CreateCrossObjectVariableSetNode(Graph, TEXT("Shield"), Target->GeneratedClass, OwnerPin, Where), nullptr);

		// A property still on the compiled class after its Blueprint dropped the variable has no guid: no node.
		FBlueprintEditorUtils::RemoveMemberVariable(Target, TEXT("Armor"));
		ASSERT_NE(Target->GeneratedClass->FindPropertyByName(TEXT("Armor")), nullptr);
		EXPECT_EQ(FBlueprintNodeUtils::CreateCrossObjectVariableGetNode(Graph, TEXT("Armor"), Target->GeneratedClass, OwnerPin, Where), nullptr);
		EXPECT_EQ(Graph->Nodes.Num(), NodesBefore);
		EXPECT_EQ(OwnerPin->LinkedTo.Num(), 3);
	}
}
