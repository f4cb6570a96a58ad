// The menus of an Animation Blueprint's graphs: the anim graph holds pure nodes only, and a state machine graph
// offers nothing of the Blueprint menu but its schema's own actions, appended as the populate tool appends them.

#include "ActionMenuTestUtils.h"

#include "AnimGraphNode_StateMachineBase.h"
#include "AnimationGraph.h"
#include "AnimationGraphSchema.h"
#include "AnimationStateMachineGraph.h"
#include "Animation/AnimBlueprint.h"
#include "Animation/AnimInstance.h"

using namespace ActionMenuTest;

TEST_F(FActionMenuFixture, AnimationGraphsOfferWhatTheyCanHold)
{
	UPackage* Package = CreatePackage(TEXT("/Game/Editor/ABP_Menu"));
	PackageNames.AddUnique(TEXT("/Game/Editor/ABP_Menu"));
	UAnimBlueprint* Blueprint = NewObject<UAnimBlueprint>(Package, TEXT("ABP_Menu"), RF_Public | RF_Standalone | RF_Transactional);
	Blueprint->ParentClass = UAnimInstance::StaticClass();
	UAnimationGraph* AnimGraph = NewObject<UAnimationGraph>(Blueprint, TEXT("AnimGraph"), RF_Transactional);
	AnimGraph->Schema = UAnimationGraphSchema::StaticClass();
	AnimGraph->GetSchema()->CreateDefaultNodesForGraph(*AnimGraph);
	Blueprint->FunctionGraphs.Add(AnimGraph);
	FGraphNodeCreator<UAnimGraphNode_StateMachine> Creator(*AnimGraph);
	UAnimGraphNode_StateMachine* Machine = Creator.CreateNode(false);
	Creator.Finalize();
	UEdGraph* MachineGraph = Machine->EditorStateMachineGraph;
	ASSERT_NE(MachineGraph, nullptr);

	// The anim graph evaluates without exec pins: pure calls and operators, no calls that run from exec.
	const std::vector<FMenuRow> AnimRows = MenuFor(Blueprint, AnimGraph);
	EXPECT_NE(FindRow(AnimRows, "Add", "Utilities|Operators"), nullptr);
	EXPECT_NE(FindRow(AnimRows, "Get Actor Location"), nullptr);
	EXPECT_EQ(FindRow(AnimRows, "Print String"), nullptr);
	EXPECT_EQ(FindRow(AnimRows, "Branch"), nullptr);
	EXPECT_EQ(FindRow(AnimRows, "Add Custom Event..."), nullptr);

	// A state machine graph takes none of the Blueprint nodes; its schema offers states.
	FBlueprintActionMenuBuilder Menu;
	EXPECT_TRUE(MenuFor(Blueprint, MachineGraph, &Menu).empty());
	FGraphContextMenuBuilder SchemaMenu(MachineGraph);
	MachineGraph->GetSchema()->GetGraphContextActions(SchemaMenu);
	Menu.Append(SchemaMenu);
	const std::vector<FMenuRow> MachineRows = ReadMenu(Menu);
	EXPECT_NE(FindRow(MachineRows, "Add State"), nullptr);
	EXPECT_NE(FindRow(MachineRows, "Add Conduit"), nullptr);
	EXPECT_NE(FindRow(MachineRows, "Add State Alias"), nullptr);
	for (const FMenuRow& Row : MachineRows)
	{
		EXPECT_NE(Row.TypeId, "FBlueprintActionMenuItem") << Row.Title;
	}
}
