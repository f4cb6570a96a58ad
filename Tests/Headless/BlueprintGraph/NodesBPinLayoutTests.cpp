#include "NodesBTestUtils.h"

#include <functional>

#include "BlueprintTypePromotion.h"
#include "K2Node_BreakStruct.h"
#include "K2Node_CommutativeAssociativeBinaryOperator.h"
#include "K2Node_ConstructObjectFromClass.h"
#include "K2Node_DynamicCast.h"
#include "K2Node_ExecutionSequence.h"
#include "K2Node_GetArrayItem.h"
#include "K2Node_IfThenElse.h"
#include "K2Node_Knot.h"
#include "K2Node_MacroInstance.h"
#include "K2Node_MakeArray.h"
#include "K2Node_MakeStruct.h"
#include "K2Node_PromotableOperator.h"
#include "K2Node_Select.h"
#include "K2Node_SpawnActorFromClass.h"
#include "K2Node_SwitchEnum.h"
#include "K2Node_SwitchInteger.h"
#include "K2Node_SwitchName.h"
#include "K2Node_SwitchString.h"

using namespace NodesBTest;

namespace
{
	class NodesBPinLayout : public FNodesBFixture
	{
	};

	struct FLayoutCase
	{
		const char* What;
		std::function<UEdGraphNode*()> Make;
		const char* Pins;
		const char* FullTitle;
		const char* MenuTitle;
		bool bPure;
	};
}

// Each node as the editor makes it: pins in the engine's order with their categories and visibility, the title
// on the node and in the menu, and purity.
TEST_F(NodesBPinLayout, NewNodesHaveTheEditorsPinsAndTitles)
{
	UScriptStruct* SubtitleCue = FindObject<UScriptStruct>(nullptr, TEXT("/Script/Engine.SubtitleCue"));
	UEnum* ScaleMethod = FindObject<UEnum>(nullptr, TEXT("/Script/Engine.ESpawnActorScaleMethod"));
	ASSERT_NE(SubtitleCue, nullptr);
	ASSERT_NE(ScaleMethod, nullptr);

	const FLayoutCase Cases[] = {
		{ "branch", [this] { return Place<UK2Node_IfThenElse>(); },
			"execute:in:exec, Condition:in:bool, then:out:exec, else:out:exec", "Branch", "Branch", false },
		{ "sequence", [this] { return Place<UK2Node_ExecutionSequence>(); },
			"execute:in:exec, then_0:out:exec, then_1:out:exec", "Sequence", "Sequence", false },
		{ "select", [this] { return Place<UK2Node_Select>(); },
			"Option 0:in:wildcard, Option 1:in:wildcard, Index:in:wildcard/index, ReturnValue:out:wildcard", "Select", "Select", true },
		{ "switch on int", [this] { auto* Node = Place<UK2Node_SwitchInteger>(); Node->AddPinToSwitchNode(); Node->AddPinToSwitchNode(); return Node; },
			"Default:out:exec, execute:in:exec, Selection:in:int, NotEqual_IntInt:in:object (hidden), 0:out:exec, 1:out:exec", "Switch on Int", "Switch on Int", false },
		{ "switch on string", [this] { return Place<UK2Node_SwitchString>([](UK2Node_SwitchString& Node) { Node.PinNames = { TEXT("Apple"), TEXT("Pear") }; }); },
			"Default:out:exec, execute:in:exec, Selection:in:string, NotEqual_StriStri:in:object (hidden), Apple:out:exec, Pear:out:exec", "Switch on String", "Switch on String", false },
		{ "switch on name", [this] { auto* Node = Place<UK2Node_SwitchName>(); Node->AddPinToSwitchNode(); return Node; },
			"Default:out:exec, execute:in:exec, Selection:in:name, NotEqual_NameName:in:object (hidden), Case_0:out:exec", "Switch on Name", "Switch on Name", false },
		{ "switch on enum", [this, ScaleMethod] { return Place<UK2Node_SwitchEnum>([ScaleMethod](UK2Node_SwitchEnum& Node) { Node.SetEnum(ScaleMethod); }); },
			"execute:in:exec, Selection:in:byte, NotEqual_ByteByte:in:object (hidden), OverrideRootScale:out:exec, MultiplyWithRoot:out:exec",
			"Switch on ESpawnActorScaleMethod", "Switch on ESpawnActorScaleMethod", false },
		{ "cast", [this] { return Place<UK2Node_DynamicCast>([](UK2Node_DynamicCast& Node) { Node.TargetType = EngineClass(TEXT("Pawn")); }); },
			"execute:in:exec, then:out:exec, CastFailed:out:exec, Object:in:wildcard, AsPawn:out:object, bSuccess:out:bool (hidden)", "Cast To Pawn", "Cast To Pawn", false },
		{ "pure cast", [this] { return Place<UK2Node_DynamicCast>([](UK2Node_DynamicCast& Node) { Node.TargetType = EngineClass(TEXT("Pawn")); Node.SetPurity(true); }); },
			"Object:in:wildcard, AsPawn:out:object, bSuccess:out:bool", "Cast To Pawn", "Cast To Pawn", true },
		{ "class cast", [this] { return Place<UK2Node_ClassDynamicCast>([](UK2Node_ClassDynamicCast& Node) { Node.TargetType = EngineClass(TEXT("Pawn")); }); },
			"execute:in:exec, then:out:exec, CastFailed:out:exec, Class:in:class, AsPawn:out:class, bSuccess:out:bool (hidden)", "Cast To Pawn Class", "Cast To Pawn Class", false },
		{ "cast without class", [this] { return Place<UK2Node_DynamicCast>(); },
			"execute:in:exec, then:out:exec, CastFailed:out:exec, Object:in:wildcard, bSuccess:out:bool (hidden)", "Bad cast node", "Bad cast node", false },
		{ "reroute", [this] { return Place<UK2Node_Knot>(); },
			"InputPin:in:wildcard, OutputPin:out:wildcard", "Reroute Node", "Add Reroute Node...", true },
		{ "make array", [this] { return Place<UK2Node_MakeArray>(); },
			"Array:out:wildcard[], [0]:in:wildcard", "Make Array", "Make Array", true },
		{ "array get", [this] { return Place<UK2Node_GetArrayItem>(); },
			"Array:in:wildcard[], Dimension 1:in:int, Output:out:wildcard", "GET", "Get (a ref)", true },
		{ "make struct", [this, SubtitleCue] { return Place<UK2Node_MakeStruct>([SubtitleCue](UK2Node_MakeStruct& Node) { Node.StructType = SubtitleCue; }); },
			"SubtitleCue:out:struct, Text:in:text, Time:in:real/float", "Make SubtitleCue", "Make SubtitleCue", true },
		{ "break struct", [this, SubtitleCue] { return Place<UK2Node_BreakStruct>([SubtitleCue](UK2Node_BreakStruct& Node) { Node.StructType = SubtitleCue; }); },
			"SubtitleCue:in:struct, Text:out:text, Time:out:real/float", "Break SubtitleCue", "Break SubtitleCue", true },
		{ "spawn actor", [this] { return Place<UK2Node_SpawnActorFromClass>(); },
			"execute:in:exec, then:out:exec, Class:in:class, ReturnValue:out:object, SpawnTransform:in:struct, CollisionHandlingOverride:in:byte, TransformScaleMethod:in:byte, Owner:in:object",
			"SpawnActor NONE", "Spawn Actor from Class", false },
		{ "construct object", [this] { return Place<UK2Node_ConstructObjectFromClass>(); },
			"execute:in:exec, then:out:exec, Class:in:class, ReturnValue:out:object", "Construct NONE", "Construct Object from Class", false },
		{ "for each loop", [this] { return Place<UK2Node_MacroInstance>([](UK2Node_MacroInstance& Node) { Node.SetMacroGraph(UE::BlueprintGraph::FindStandardMacro(TEXT("ForEachLoop"))); }); },
			"Exec:in:exec, Array:in:wildcard[], LoopBody:out:exec, Array Element:out:wildcard, Array Index:out:int, Completed:out:exec", "For Each Loop", "For Each Loop", false },
		{ "for loop", [this] { return Place<UK2Node_MacroInstance>([](UK2Node_MacroInstance& Node) { Node.SetMacroGraph(UE::BlueprintGraph::FindStandardMacro(TEXT("ForLoop"))); }); },
			"Exec:in:exec, FirstIndex:in:int, LastIndex:in:int, LoopBody:out:exec, Index:out:int, Completed:out:exec", "For Loop", "For Loop", false },
		{ "do once", [this] { return Place<UK2Node_MacroInstance>([](UK2Node_MacroInstance& Node) { Node.SetMacroGraph(UE::BlueprintGraph::FindStandardMacro(TEXT("DoOnce"))); }); },
			"execute:in:exec, Reset:in:exec, Start Closed:in:bool, Completed:out:exec", "Do Once", "Do Once", false },
		{ "do n", [this] { return Place<UK2Node_MacroInstance>([](UK2Node_MacroInstance& Node) { Node.SetMacroGraph(UE::BlueprintGraph::FindStandardMacro(TEXT("Do N"))); }); },
			"Enter:in:exec, N:in:int, Reset:in:exec, Exit:out:exec, Counter:out:int", "Do N", "Do N", false },
		{ "is valid", [this] { return Place<UK2Node_MacroInstance>([](UK2Node_MacroInstance& Node) { Node.SetMacroGraph(UE::BlueprintGraph::FindStandardMacro(TEXT("IsValid"))); }); },
			"exec:in:exec, InputObject:in:object, Is Valid:out:exec, Is Not Valid:out:exec", "Is Valid", "Is Valid", false },
		{ "add operator", [this] { return Place<UK2Node_PromotableOperator>([](UK2Node_PromotableOperator& Node) { Node.SetFromFunction(LibraryFunction(TEXT("KismetMathLibrary"), TEXT("Add_DoubleDouble"))); }); },
			"A:in:wildcard, B:in:wildcard, ReturnValue:out:wildcard", nullptr, nullptr, true },
		{ "less operator", [this] { return Place<UK2Node_PromotableOperator>([](UK2Node_PromotableOperator& Node) { Node.SetFromFunction(LibraryFunction(TEXT("KismetMathLibrary"), TEXT("Less_DoubleDouble"))); }); },
			"A:in:wildcard, B:in:wildcard, ReturnValue:out:bool", nullptr, nullptr, true },
	};

	for (const FLayoutCase& Case : Cases)
	{
		SCOPED_TRACE(Case.What);
		UEdGraphNode* Node = Case.Make();
		ASSERT_NE(Node, nullptr);
		EXPECT_EQ(DescribePins(Node), Case.Pins);
		if (Case.FullTitle)
		{
			EXPECT_EQ(Str(Node->GetNodeTitle(ENodeTitleType::FullTitle)), Case.FullTitle);
			EXPECT_EQ(Str(Node->GetNodeTitle(ENodeTitleType::MenuTitle)), Case.MenuTitle);
		}
		EXPECT_EQ(CastChecked<UK2Node>(Node)->IsNodePure(), Case.bPure);
		EXPECT_FALSE(Node->GetTooltipText().IsEmpty());
	}
}

TEST_F(NodesBPinLayout, PinsCarryTheEditorsNamesDefaultsAndFlags)
{
	UK2Node_IfThenElse* Branch = Place<UK2Node_IfThenElse>();
	EXPECT_EQ(Str(Branch->GetConditionPin()->AutogeneratedDefaultValue), "true");
	EXPECT_EQ(Str(Branch->GetConditionPin()->DefaultValue), "true");
	EXPECT_EQ(Str(Branch->GetThenPin()->PinFriendlyName), "true");
	EXPECT_EQ(Str(Branch->GetElsePin()->PinFriendlyName), "false");

	UK2Node_SpawnActorFromClass* Spawn = Place<UK2Node_SpawnActorFromClass>();
	EXPECT_EQ(Str(Spawn->GetCollisionHandlingOverridePin()->DefaultValue), "Undefined");
	// Placing the node picks the scale rule a user expects; a node made otherwise decides at run time.
	EXPECT_EQ(Str(Spawn->GetScaleMethodPin()->DefaultValue), "MultiplyWithRoot");
	EXPECT_TRUE(Spawn->GetScaleMethodPin()->bAdvancedView);
	EXPECT_TRUE(Spawn->GetOwnerPin()->bAdvancedView);
	EXPECT_EQ(Spawn->AdvancedPinDisplay, ENodeAdvancedPins::Hidden);
	EXPECT_EQ(Spawn->GetClassPin()->PinType.PinSubCategoryObject.Get(), AActor::StaticClass());

	UK2Node_MacroInstance* Gate = Place<UK2Node_MacroInstance>([](UK2Node_MacroInstance& Node) { Node.SetMacroGraph(UE::BlueprintGraph::FindStandardMacro(TEXT("Gate"))); });
	EXPECT_EQ(DescribePins(Gate), "Enter:in:exec, Open:in:exec, Close:in:exec, Toggle:in:exec, Start Closed:in:bool, Exit:out:exec");
	EXPECT_EQ(Str(Gate->FindPin(TEXT("Start Closed"))->DefaultValue), "false");

	// The engine's asset names these graphs; saved references must name the same ones.
	EXPECT_EQ(Str(Gate->MacroGraphReference.GetGraph()->GetPathName()), "/Engine/EditorBlueprintResources/StandardMacros.StandardMacros:Gate");
	const UEdGraph* ForEach = UE::BlueprintGraph::FindStandardMacro(TEXT("ForEachLoop"));
	ASSERT_NE(ForEach, nullptr);
	EXPECT_EQ(Str(ForEach->GraphGuid.ToString()), "99DBFD5540A796041F72A5A9DA655026");
	EXPECT_EQ(UE::BlueprintGraph::GetStandardMacros()->BlueprintType, BPTYPE_MacroLibrary);
	EXPECT_EQ(UE::BlueprintGraph::FindStandardMacro(TEXT("NoSuchMacro")), nullptr);

	UK2Node_MacroInstance* FlipFlop = Place<UK2Node_MacroInstance>([](UK2Node_MacroInstance& Node) { Node.SetMacroGraph(UE::BlueprintGraph::FindStandardMacro(TEXT("FlipFlop"))); });
	EXPECT_EQ(DescribePins(FlipFlop), "None:in:exec, A:out:exec, B:out:exec, IsA:out:bool");
	EXPECT_EQ(Str(FlipFlop->GetNodeTitle(ENodeTitleType::FullTitle)), "Flip Flop");

	UK2Node_MakeStruct* Make = Place<UK2Node_MakeStruct>([](UK2Node_MakeStruct& Node) { Node.StructType = FindObject<UScriptStruct>(nullptr, TEXT("/Script/Engine.SubtitleCue")); });
	EXPECT_EQ(Str(Make->FindPin(TEXT("Time"))->DefaultValue), "0.000000");
	EXPECT_TRUE(UK2Node_MakeStruct::CanBeMade(FindObject<UScriptStruct>(nullptr, TEXT("/Script/Engine.SubtitleCue"))));
	// Structs with a native make function get a call of it, not a Make node.
	EXPECT_FALSE(UK2Node_MakeStruct::CanBeMade(TBaseStructure<FVector>::Get()));
	EXPECT_FALSE(UK2Node_BreakStruct::CanBeBroken(TBaseStructure<FVector>::Get()));
}
