// An Animation Blueprint as an animator leaves it: the state machine keeps its default name (spaces included), a state
// is entered by several transitions, and the Blueprint compiles, saves and loads back whole.

#include "AnimGraphNode_StateMachineBase.h"
#include "AnimStateNode.h"
#include "AnimStateNodeBase.h"
#include "AnimStateTransitionNode.h"
#include "AnimationStateMachineGraph.h"
#include "Animation/AnimBlueprint.h"
#include "Animation/AnimInstance.h"
#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "HAL/PlatformMisc.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "Misc/PackageName.h"
#include "Modules/ModuleManager.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

#include <gtest/gtest.h>

namespace
{
	template <typename NodeType>
	NodeType* Place(UEdGraph* Graph)
	{
		FGraphNodeCreator<NodeType> Creator(*Graph);
		NodeType* Node = Creator.CreateNode(false);
		Creator.Finalize();
		return Node;
	}

	TArray<FString> TransitionTitles(const UAnimBlueprint& Blueprint)
	{
		TArray<UEdGraph*> Graphs;
		Blueprint.GetAllGraphs(Graphs);
		TArray<FString> Titles;
		for (const UEdGraph* Graph : Graphs)
		{
			for (const UEdGraphNode* Node : Graph->Nodes)
			{
				if (Node && Node->IsA<UAnimStateTransitionNode>())
				{
					Titles.Add(Node->GetNodeTitle(ENodeTitleType::FullTitle).ToString());
				}
			}
		}
		Titles.Sort();
		return Titles;
	}
}

TEST(AnimBlueprintRoundTrip, AStateEnteredFromSeveralStatesCompilesSavesAndLoads)
{
	FTempProjectFolder Project;
	FString Error;
	ASSERT_TRUE(UE::Headless::OpenProject(Project.GetProjectFile(), Error)) << U8(Error);
	FModuleManager::Get().LoadModule(TEXT("AnimGraph"));
	FPlatformMisc::SeedGuidGenerator(11);

	const TCHAR* PackageName = TEXT("/Game/Anim/ABP_Hero");
	UPackage* Package = CreatePackage(PackageName);
	UAnimBlueprint* Blueprint = Cast<UAnimBlueprint>(FKismetEditorUtilities::CreateBlueprint(UAnimInstance::StaticClass(), Package, TEXT("ABP_Hero"),
		BPTYPE_Normal, UAnimBlueprint::StaticClass(), UBlueprintGeneratedClass::StaticClass()));
	ASSERT_NE(Blueprint, nullptr);
	UEdGraph* AnimGraph = nullptr;
	for (UEdGraph* Graph : Blueprint->FunctionGraphs)
	{
		AnimGraph = Graph->GetFName() == UEdGraphSchema_K2::GN_AnimGraph ? Graph : AnimGraph;
	}
	ASSERT_NE(AnimGraph, nullptr);

	UAnimGraphNode_StateMachine* Machine = Place<UAnimGraphNode_StateMachine>(AnimGraph);
	UAnimationStateMachineGraph* Graph = Machine->EditorStateMachineGraph;
	ASSERT_EQ(Graph->GetName(), TEXT("New State Machine"));
	TArray<UAnimStateNode*> States;
	for (const TCHAR* Name : {TEXT("Idle"), TEXT("Walk Forward"), TEXT("Jump")})
	{
		UAnimStateNode* State = Place<UAnimStateNode>(Graph);
		State->OnRenameNode(Name);
		States.Add(State);
	}
	const UEdGraphSchema* Schema = Graph->GetSchema();
	ASSERT_TRUE(Schema->TryCreateConnection(Graph->EntryNode->Pins[0], States[0]->GetInputPin()));
	// "Walk Forward" is entered from both other states.
	ASSERT_TRUE(Schema->TryCreateConnection(States[0]->GetOutputPin(), States[1]->GetInputPin()));
	ASSERT_TRUE(Schema->TryCreateConnection(States[2]->GetOutputPin(), States[1]->GetInputPin()));
	ASSERT_TRUE(Schema->TryCreateConnection(States[1]->GetOutputPin(), States[2]->GetInputPin()));

	FCompilerResultsLog Log;
	Log.bSilentMode = true;
	FKismetEditorUtilities::CompileBlueprint(Blueprint, EBlueprintCompileOptions::None, &Log);
	for (const TSharedRef<FTokenizedMessage>& Message : Log.Messages)
	{
		EXPECT_NE(Message->GetSeverity(), EMessageSeverity::Error) << U8(Message->ToText().ToString());
	}
	const TArray<FString> Expected = {TEXT("Idle to Walk Forward"), TEXT("Jump to Walk Forward"), TEXT("Walk Forward to Jump")};
	ASSERT_EQ(TransitionTitles(*Blueprint), Expected);

	const FString File = FPackageName::LongPackageNameToFilename(PackageName, TEXT(".uasset"));
	ASSERT_TRUE(UPackage::Save(Package, Blueprint, *File, FSavePackageArgs()).IsSuccessful()) << U8(UE::Headless::GetLastPackageError());
	TArray<UObject*> Inner;
	GetObjectsWithOuter(Package, Inner, true);
	for (UObject* Object : Inner)
	{
		Object->ClearFlags(RF_Standalone);
		Object->MarkAsGarbage();
	}
	Package->MarkAsGarbage();
	CollectGarbage(RF_NoFlags);

	UPackage* Loaded = LoadPackage(nullptr, PackageName, LOAD_None);
	ASSERT_NE(Loaded, nullptr) << U8(UE::Headless::GetLastPackageError());
	const UAnimBlueprint* Reloaded = FindObject<UAnimBlueprint>(Loaded, TEXT("ABP_Hero"));
	ASSERT_NE(Reloaded, nullptr);
	EXPECT_EQ(TransitionTitles(*Reloaded), Expected);
}
