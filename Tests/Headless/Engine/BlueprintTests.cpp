#include <gtest/gtest.h>

#include "CoreMinimal.h"
#include "EdGraph/EdGraph.h"
#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "Components/SceneComponent.h"
#include "GameFramework/Actor.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "Catalogue/EngineCatalogue.h"

namespace
{
	UEdGraph* MakeGraph(UObject* Outer, const TCHAR* Name)
	{
		return NewObject<UEdGraph>(Outer, FName(Name));
	}
}

TEST(BlueprintTests, AllGraphsListsEveryKindAndNestedGraphs)
{
	UBlueprint* Blueprint = NewObject<UBlueprint>(GetTransientPackage(), FName(TEXT("BP_AllGraphs")));
	UEdGraph* Event = MakeGraph(Blueprint, TEXT("EventGraph"));
	UEdGraph* Function = MakeGraph(Blueprint, TEXT("DoThing"));
	UEdGraph* Macro = MakeGraph(Blueprint, TEXT("MyMacro"));
	UEdGraph* Delegate = MakeGraph(Blueprint, TEXT("OnThing"));
	UEdGraph* Interface = MakeGraph(Blueprint, TEXT("InterfaceCall"));
	UEdGraph* Nested = MakeGraph(Function, TEXT("Collapsed"));
	Function->SubGraphs.Add(Nested);
	Blueprint->UbergraphPages.Add(Event);
	Blueprint->FunctionGraphs.Add(Function);
	Blueprint->MacroGraphs.Add(Macro);
	Blueprint->DelegateSignatureGraphs.Add(Delegate);
	FBPInterfaceDescription Description;
	Description.Graphs.Add(Interface);
	Blueprint->ImplementedInterfaces.Add(Description);

	TArray<UEdGraph*> Graphs;
	Blueprint->GetAllGraphs(Graphs);
	const TArray<UEdGraph*> Expected = {Function, Nested, Macro, Event, Delegate, Interface};
	EXPECT_EQ(Graphs, Expected);
}

TEST(BlueprintTests, VariableMetaDataIsKeyedAndReplaced)
{
	FBPVariableDescription Variable;
	Variable.SetMetaData(TEXT("Tooltip"), TEXT("first"));
	Variable.SetMetaData(TEXT("ExposeOnSpawn"), TEXT("true"));
	Variable.SetMetaData(TEXT("Tooltip"), TEXT("second"));
	EXPECT_EQ(Variable.MetaDataArray.Num(), 2);
	EXPECT_EQ(Variable.GetMetaData(TEXT("Tooltip")), TEXT("second"));
	EXPECT_EQ(Variable.FindMetaDataEntryIndexForKey(TEXT("ExposeOnSpawn")), 1);
	Variable.RemoveMetaData(TEXT("Tooltip"));
	EXPECT_FALSE(Variable.HasMetaData(TEXT("Tooltip")));
	EXPECT_EQ(Variable.GetMetaData(TEXT("Tooltip")), FString());
}

TEST(BlueprintTests, BlueprintHierarchyFollowsGeneratedClasses)
{
	UBlueprint* Parent = NewObject<UBlueprint>(GetTransientPackage(), FName(TEXT("BP_Parent")));
	UBlueprintGeneratedClass* ParentClass = NewObject<UBlueprintGeneratedClass>(GetTransientPackage(), FName(TEXT("BP_Parent_C")));
	ParentClass->SetSuperStruct(AActor::StaticClass());
	ParentClass->ClassGeneratedBy = Parent;
	Parent->GeneratedClass = ParentClass;
	UBlueprint* Child = NewObject<UBlueprint>(GetTransientPackage(), FName(TEXT("BP_Child")));
	UBlueprintGeneratedClass* ChildClass = NewObject<UBlueprintGeneratedClass>(GetTransientPackage(), FName(TEXT("BP_Child_C")));
	ChildClass->SetSuperStruct(ParentClass);
	ChildClass->ClassGeneratedBy = Child;

	TArray<UBlueprint*> Hierarchy;
	EXPECT_TRUE(UBlueprint::GetBlueprintHierarchyFromClass(ChildClass, Hierarchy));
	const TArray<UBlueprint*> Expected = {Child, Parent};
	EXPECT_EQ(Hierarchy, Expected);
	EXPECT_EQ(UBlueprint::GetBlueprintFromClass(AActor::StaticClass()), nullptr);
	Parent->Status = BS_Error;
	EXPECT_FALSE(UBlueprint::GetBlueprintHierarchyFromClass(ChildClass, Hierarchy));
}

TEST(BlueprintTests, ConstructionScriptTreeAddsFindsAndRemoves)
{
	UBlueprint* Blueprint = NewObject<UBlueprint>(GetTransientPackage(), FName(TEXT("BP_Components")));
	USimpleConstructionScript* SCS = NewObject<USimpleConstructionScript>(Blueprint, FName(TEXT("SimpleConstructionScript")));
	Blueprint->SimpleConstructionScript = SCS;
	EXPECT_EQ(SCS->GetBlueprint(), Blueprint);

	USCS_Node* Root = SCS->CreateNode(USceneComponent::StaticClass(), TEXT("Root"));
	ASSERT_NE(Root, nullptr);
	SCS->AddNode(Root);
	USCS_Node* Child = SCS->CreateNode(USceneComponent::StaticClass());
	Root->AddChildNode(Child);
	USCS_Node* Second = SCS->CreateNode(USceneComponent::StaticClass());
	Root->AddChildNode(Second);

	EXPECT_EQ(Child->GetVariableName(), FName(TEXT("SceneComponent")));
	EXPECT_EQ(Second->GetVariableName(), FName(TEXT("SceneComponent1")));
	EXPECT_TRUE(Cast<USceneComponent>(Child->GetActualComponentTemplate()) != nullptr);
	EXPECT_EQ(SCS->GetAllNodes().Num(), 3);
	EXPECT_EQ(SCS->FindSCSNode(TEXT("SceneComponent1")), Second);
	EXPECT_EQ(SCS->FindParentNode(Second), Root);
	EXPECT_TRUE(Second->IsChildOf(Root));
	EXPECT_EQ(SCS->CreateNode(AActor::StaticClass()), nullptr);

	SCS->RemoveNodeAndPromoteChildren(Root);
	EXPECT_EQ(SCS->GetRootNodes().Num(), 2);
	EXPECT_EQ(SCS->GetRootNodes()[0], Child);
	SCS->RemoveNode(Child);
	EXPECT_EQ(SCS->FindSCSNode(TEXT("SceneComponent")), nullptr);
	EXPECT_EQ(SCS->GetAllNodes().Num(), 1);
}

TEST(BlueprintTests, SceneComponentAttachmentRefusesCycles)
{
	USceneComponent* A = NewObject<USceneComponent>(GetTransientPackage(), NAME_None);
	USceneComponent* B = NewObject<USceneComponent>(GetTransientPackage(), NAME_None);
	B->SetupAttachment(A);
	EXPECT_EQ(B->GetAttachParent(), A);
	EXPECT_EQ(A->GetAttachChildren().Num(), 1);
	A->SetRelativeLocationAndRotation(FVector(1.0, 2.0, 3.0), FRotator(0.0, 90.0, 0.0));
	EXPECT_EQ(A->GetRelativeLocation(), FVector(1.0, 2.0, 3.0));
	EXPECT_EQ(A->GetRelativeRotation(), FRotator(0.0, 90.0, 0.0));
}

TEST(BlueprintTests, CatalogueCompletesTheNativeActorClass)
{
	FString Error;
	ASSERT_TRUE(UE::Catalogue::RegisterEngineCatalogue(&Error)) << FStringToUTF8(Error);
	UClass* Actor = FindObject<UClass>(nullptr, TEXT("/Script/Engine.Actor"));
	ASSERT_EQ(Actor, AActor::StaticClass());
	EXPECT_NE(Actor->FindFunctionByName(TEXT("K2_GetActorLocation")), nullptr);
	EXPECT_NE(Actor->FindPropertyByName(TEXT("RootComponent")), nullptr);
	UClass* Scene = FindObject<UClass>(nullptr, TEXT("/Script/Engine.SceneComponent"));
	ASSERT_EQ(Scene, USceneComponent::StaticClass());
	EXPECT_NE(Scene->FindFunctionByName(TEXT("K2_SetRelativeLocation")), nullptr);
}

TEST(ActorComponents, AnActorsComponentsAreThoseItOwnsInOrderAndInactiveAsTemplates)
{
	AActor* Actor = NewObject<AActor>(GetTransientPackage(), TEXT("ComponentOwner"));
	USceneComponent* Root = NewObject<USceneComponent>(Actor, TEXT("Root"));
	UActorComponent* Other = NewObject<USceneComponent>(Actor, TEXT("Other"));
	NewObject<USceneComponent>(GetTransientPackage(), TEXT("Elsewhere"));
	TArray<UActorComponent*> Components;
	Actor->GetComponents(Components);
	ASSERT_EQ(Components.Num(), 2);
	EXPECT_EQ(Components[0], Root);
	EXPECT_EQ(Components[1], Other);
	EXPECT_FALSE(Root->IsActive());
	Root->SetActiveFlag(true);
	EXPECT_TRUE(Root->IsActive());
}
