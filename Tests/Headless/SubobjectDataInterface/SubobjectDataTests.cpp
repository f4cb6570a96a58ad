#include <gtest/gtest.h>

#include "CoreMinimal.h"
#include "Components/SceneComponent.h"
#include "Components/ActorComponent.h"
#include "Engine/Blueprint.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "GameFramework/Actor.h"
#include "SubobjectDataSubsystem.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

namespace
{
	/** An actor Blueprint with Root > (Arm > Camera), and a non-scene component beside them. */
	struct FComponentsFixture
	{
		UBlueprint* Blueprint = nullptr;
		USimpleConstructionScript* SCS = nullptr;
		USCS_Node* Root = nullptr;
		USCS_Node* Arm = nullptr;
		USCS_Node* Camera = nullptr;
		USCS_Node* Logic = nullptr;

		explicit FComponentsFixture(const TCHAR* Name)
		{
			UPackage* Package = CreatePackage(*FString::Printf(TEXT("/Game/Components/%s"), Name));
			Blueprint = NewObject<UBlueprint>(Package, Name, RF_Public | RF_Standalone);
			Blueprint->ParentClass = AActor::StaticClass();
			SCS = NewObject<USimpleConstructionScript>(Blueprint, TEXT("SimpleConstructionScript"));
			Blueprint->SimpleConstructionScript = SCS;
			Root = SCS->CreateNode(USceneComponent::StaticClass(), TEXT("Root"));
			SCS->AddNode(Root);
			Arm = SCS->CreateNode(USceneComponent::StaticClass(), TEXT("Arm"));
			Root->AddChildNode(Arm);
			Camera = SCS->CreateNode(USceneComponent::StaticClass(), TEXT("Camera"));
			Arm->AddChildNode(Camera);
			Logic = SCS->CreateNode(UActorComponent::StaticClass(), TEXT("Logic"));
			SCS->AddNode(Logic);
		}

		TArray<FSubobjectDataHandle> Gather() const
		{
			TArray<FSubobjectDataHandle> Handles;
			USubobjectDataSubsystem::Get()->K2_GatherSubobjectDataForBlueprint(Blueprint, Handles);
			return Handles;
		}

		FSubobjectDataHandle Find(const TArray<FSubobjectDataHandle>& Handles, USCS_Node* Node) const
		{
			return USubobjectDataSubsystem::Get()->FindHandleForObject(Handles[0], Node->ComponentTemplate, Blueprint);
		}
	};

	FString Names(const TArray<FSubobjectDataHandle>& Handles)
	{
		FString Result;
		for (const FSubobjectDataHandle& Handle : Handles)
		{
			const FSubobjectData* Data = Handle.GetData();
			const FSubobjectData* Parent = Data->GetParentHandle().GetData();
			Result += FString::Printf(TEXT("%s<%s "), *Data->GetVariableName().ToString(), Parent ? *Parent->GetVariableName().ToString() : TEXT("-"));
		}
		return Result;
	}
}

TEST(SubobjectData, GatherPutsTheActorFirstAndEveryComponentUnderItsParent)
{
	FComponentsFixture Fixture(TEXT("BP_Gather"));
	const TArray<FSubobjectDataHandle> Handles = Fixture.Gather();
	ASSERT_EQ(Handles.Num(), 5);
	EXPECT_TRUE(Handles[0].GetData()->IsActor());
	EXPECT_EQ(Names(Handles), FString(TEXT("None<- Root<None Arm<Root Camera<Arm Logic<None ")));
	EXPECT_TRUE(Handles[1].GetData()->IsRootComponent());
	EXPECT_FALSE(Handles[2].GetData()->IsRootComponent());
	EXPECT_TRUE(Handles[2].GetData()->CanReparent());
	EXPECT_FALSE(Handles[4].GetData()->IsSceneComponent());
	EXPECT_EQ(Fixture.Find(Handles, Fixture.Camera), Handles[3]);
	EXPECT_FALSE(USubobjectDataSubsystem::Get()->FindHandleForObject(Handles[0], Fixture.Blueprint, Fixture.Blueprint).IsValid());
}

TEST(SubobjectData, ReparentMovesTheNodeWithItsChildren)
{
	FComponentsFixture Fixture(TEXT("BP_Reparent"));
	TArray<FSubobjectDataHandle> Handles = Fixture.Gather();
	FReparentSubobjectParams Params;
	Params.NewParentHandle = Fixture.Find(Handles, Fixture.Root);
	Params.BlueprintContext = Fixture.Blueprint;
	ASSERT_TRUE(USubobjectDataSubsystem::Get()->ReparentSubobjects(Params, {Fixture.Find(Handles, Fixture.Camera)}));
	EXPECT_EQ(Fixture.SCS->FindParentNode(Fixture.Camera), Fixture.Root);
	EXPECT_EQ(Names(Fixture.Gather()), FString(TEXT("None<- Root<None Arm<Root Camera<Root Logic<None ")));

	// Under its own child, onto a non-scene component, or moving the root's parent: refused, nothing moves.
	Handles = Fixture.Gather();
	Params.NewParentHandle = Fixture.Find(Handles, Fixture.Arm);
	EXPECT_FALSE(USubobjectDataSubsystem::Get()->ReparentSubobjects(Params, {Fixture.Find(Handles, Fixture.Root)}));
	Params.NewParentHandle = Fixture.Find(Handles, Fixture.Logic);
	EXPECT_FALSE(USubobjectDataSubsystem::Get()->ReparentSubobjects(Params, {Fixture.Find(Handles, Fixture.Camera)}));
	Params.NewParentHandle = Handles[0];
	EXPECT_FALSE(USubobjectDataSubsystem::Get()->ReparentSubobjects(Params, {Fixture.Find(Handles, Fixture.Camera)}));
	EXPECT_EQ(Names(Fixture.Gather()), FString(TEXT("None<- Root<None Arm<Root Camera<Root Logic<None ")));
}

TEST(SubobjectData, AddDeleteAndRenameWorkOnTheConstructionScript)
{
	FComponentsFixture Fixture(TEXT("BP_Edit"));
	TArray<FSubobjectDataHandle> Handles = Fixture.Gather();
	FAddNewSubobjectParams Add;
	Add.ParentHandle = Handles[0];
	Add.NewClass = USceneComponent::StaticClass();
	Add.BlueprintContext = Fixture.Blueprint;
	FText Reason;
	const FSubobjectDataHandle Added = USubobjectDataSubsystem::Get()->AddNewSubobject(Add, Reason);
	ASSERT_TRUE(Added.IsValid()) << TCHAR_TO_UTF8(*Reason.ToString());
	// A scene component added to the actor lands under the root.
	EXPECT_EQ(Added.GetData()->GetParentHandle().GetData()->GetVariableName(), FName(TEXT("Root")));
	EXPECT_EQ(Fixture.SCS->GetAllNodes().Num(), 5);

	Add.NewClass = AActor::StaticClass();
	EXPECT_FALSE(USubobjectDataSubsystem::Get()->AddNewSubobject(Add, Reason).IsValid());
	EXPECT_FALSE(Reason.IsEmpty());

	Handles = Fixture.Gather();
	EXPECT_TRUE(USubobjectDataSubsystem::Get()->RenameSubobject(Fixture.Find(Handles, Fixture.Arm), FText::FromString(TEXT("Boom"))));
	EXPECT_EQ(Fixture.Arm->GetVariableName(), FName(TEXT("Boom")));
	EXPECT_FALSE(USubobjectDataSubsystem::Get()->RenameSubobject(Fixture.Find(Handles, Fixture.Arm), FText::FromString(TEXT("Root"))));
	EXPECT_FALSE(USubobjectDataSubsystem::Get()->RenameSubobject(Handles[0], FText::FromString(TEXT("Self"))));

	// Deleting the arm keeps its camera, moved up to the root.
	EXPECT_EQ(USubobjectDataSubsystem::Get()->DeleteSubobjects(Handles[0], {Fixture.Find(Handles, Fixture.Arm), Handles[0]}, Fixture.Blueprint), 1);
	EXPECT_EQ(Fixture.SCS->FindParentNode(Fixture.Camera), Fixture.Root);
	EXPECT_FALSE(Fixture.SCS->GetAllNodes().Contains(Fixture.Arm));
}
