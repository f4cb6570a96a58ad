#include "NodesATestUtils.h"

#include "Engine/BlueprintGeneratedClass.h"
#include "Engine/MemberReference.h"
#include "UObject/UnrealType.h"

using namespace NodesATest;

namespace
{
	const TCHAR* const ActorPath = TEXT("/Script/Engine.Actor");

	class NodesAMemberReference : public FBlueprintFixture
	{
	protected:
		/** A Blueprint of Actor with a skeleton class holding Health (declared with a guid) and a function OpenDoor(Steps local). */
		UClass* MakeBlueprintWithSkeleton()
		{
			MakeBlueprint(FindClass(ActorPath));
			FBPVariableDescription Health;
			Health.VarName = TEXT("Health");
			Health.VarGuid = FGuid(1, 2, 3, 4);
			Health.VarType.PinCategory = UEdGraphSchema_K2::PC_Int;
			Blueprint->NewVariables.Add(Health);
			UEdGraph* Function = AddFunctionGraph(TEXT("OpenDoor"));
			Function->GraphGuid = FGuid(5, 6, 7, 8);

			UBlueprintGeneratedClass* Skeleton = NewObject<UBlueprintGeneratedClass>(Blueprint->GetPackage(), TEXT("SKEL_BP_Test_C"), RF_Public | RF_Transient);
			Skeleton->SetSuperStruct(Blueprint->ParentClass);
			Skeleton->ClassGeneratedBy = Blueprint;
			static_cast<UClass*>(Skeleton)->ClassGeneratedBy = Blueprint;
			UFunction* OpenDoor = NewObject<UFunction>(Skeleton, TEXT("OpenDoor"), RF_Public | RF_Transient);
			OpenDoor->AddCppProperty(new FIntProperty(OpenDoor, TEXT("Steps"), RF_Public | RF_MarkAsNative | RF_Transient));
			OpenDoor->Bind();
			OpenDoor->StaticLink(true);
			Skeleton->AddFunctionToFunctionMap(OpenDoor, OpenDoor->GetFName());
			Skeleton->AddCppProperty(new FIntProperty(Skeleton, TEXT("Health"), RF_Public | RF_MarkAsNative | RF_Transient));
			Skeleton->Bind();
			Skeleton->StaticLink(true);
			Blueprint->SkeletonGeneratedClass = Skeleton;
			return Skeleton;
		}
	};
}

TEST_F(NodesAMemberReference, SelfExternalAndLocalMembersResolve)
{
	UClass* Skeleton = MakeBlueprintWithSkeleton();
	UClass* Actor = FindClass(ActorPath);

	FMemberReference External;
	External.SetExternalMember(TEXT("K2_GetActorLocation"), Actor);
	EXPECT_FALSE(External.IsSelfContext());
	EXPECT_EQ(External.GetMemberParentClass(), Actor);
	EXPECT_EQ(External.GetMemberParentClass(Skeleton), Actor);
	EXPECT_EQ(External.ResolveMember<UFunction>(Skeleton), Actor->FindFunctionByName(TEXT("K2_GetActorLocation")));
	EXPECT_EQ(External.ResolveMember<FProperty>(Skeleton), nullptr);
	EXPECT_EQ(External.ResolveMemberFunction(Skeleton), Actor->FindFunctionByName(TEXT("K2_GetActorLocation")));

	FMemberReference Self;
	Self.SetSelfMember(TEXT("Health"));
	EXPECT_TRUE(Self.IsSelfContext());
	EXPECT_EQ(Self.GetMemberParentClass(), nullptr);
	EXPECT_EQ(Self.GetMemberParentClass(Skeleton), Skeleton);
	EXPECT_EQ(Self.ResolveMember<FProperty>(Skeleton), Skeleton->FindPropertyByName(TEXT("Health")));
	EXPECT_EQ(Self.ResolveMember<FProperty>(Blueprint), Skeleton->FindPropertyByName(TEXT("Health")));
	// Resolving learns the Blueprint's guid of the variable.
	EXPECT_EQ(Self.GetMemberGuid(), FGuid(1, 2, 3, 4));
	EXPECT_EQ(Self.ResolveMember<FProperty>(static_cast<UClass*>(nullptr)), nullptr);

	FMemberReference Local;
	Local.SetLocalMember(TEXT("Steps"), TEXT("OpenDoor"), FGuid());
	EXPECT_TRUE(Local.IsLocalScope());
	EXPECT_FALSE(Local.IsSelfContext());
	EXPECT_EQ(Local.GetMemberParentClass(Skeleton), Skeleton);
	EXPECT_EQ(Local.GetMemberScope(Skeleton), Skeleton->FindFunctionByName(TEXT("OpenDoor")));
	EXPECT_EQ(U8(Local.GetMemberScopeName()), "OpenDoor");
	EXPECT_NE(Local.ResolveMember<FProperty>(Skeleton), nullptr);
	Local.InvalidateScope();
	EXPECT_FALSE(Local.IsLocalScope());
	EXPECT_TRUE(Local.IsSelfContext());
}

TEST_F(NodesAMemberReference, SetFromFieldDecidesSelfnessAgainstTheScope)
{
	UClass* Skeleton = MakeBlueprintWithSkeleton();
	UClass* Actor = FindClass(ActorPath);
	UClass* Library = FindClass(TEXT("/Script/Engine.KismetSystemLibrary"));

	// An inherited function is reached through self; a library's is not.
	FMemberReference Inherited;
	Inherited.SetFromField<UFunction>(Actor->FindFunctionByName(TEXT("K2_DestroyActor")), Skeleton);
	EXPECT_TRUE(Inherited.IsSelfContext());
	FMemberReference Library_;
	Library_.SetFromField<UFunction>(Library->FindFunctionByName(TEXT("PrintString")), Skeleton);
	EXPECT_FALSE(Library_.IsSelfContext());
	EXPECT_EQ(Library_.GetMemberParentClass(), Library);
	// The Blueprint's own function carries its graph's guid.
	FMemberReference Own;
	Own.SetFromField<UFunction>(Skeleton->FindFunctionByName(TEXT("OpenDoor")), Skeleton);
	EXPECT_TRUE(Own.IsSelfContext());
	EXPECT_EQ(Own.GetMemberGuid(), FGuid(5, 6, 7, 8));
	// Properties too, by their variable guid.
	FMemberReference Property;
	Property.SetFromField<FProperty>(Skeleton->FindPropertyByName(TEXT("Health")), false);
	EXPECT_FALSE(Property.IsSelfContext());
	EXPECT_EQ(Property.GetMemberGuid(), FGuid(1, 2, 3, 4));

	// A renamed variable is found by its guid, and the reference takes the new name.
	Blueprint->NewVariables[0].VarName = TEXT("Vitality");
	Skeleton->FindPropertyByName(TEXT("Health"))->Rename(TEXT("Vitality"));
	FMemberReference Stale;
	FGuid Guid(1, 2, 3, 4);
	Stale.SetSelfMember(TEXT("Health"), Guid);
	EXPECT_NE(Stale.ResolveMember<FProperty>(Skeleton), nullptr);
	EXPECT_EQ(U8(Stale.GetMemberName()), "Vitality");
}

TEST_F(NodesAMemberReference, GlobalSignaturesResolveThroughTheirPackage)
{
	UFunction* Signature = FindObject<UFunction>(nullptr, TEXT("/Script/Engine.ActorBeginOverlapSignature__DelegateSignature"));
	ASSERT_NE(Signature, nullptr);
	FSimpleMemberReference Simple;
	FMemberReference::FillSimpleMemberReference<UFunction>(Signature, Simple);
	EXPECT_EQ(U8(Simple.MemberName), "ActorBeginOverlapSignature__DelegateSignature");
	EXPECT_EQ(FMemberReference::ResolveSimpleMemberReference<UFunction>(Simple), Signature);

	// An old reference without its package still finds a signature of a script package.
	FMemberReference Bare;
	Bare.SetExternalDelegateMember(TEXT("ActorBeginOverlapSignature__DelegateSignature"));
	EXPECT_EQ(Bare.ResolveMember<UFunction>(static_cast<UClass*>(nullptr)), Signature);
	EXPECT_NE(Bare.GetMemberParentPackage(), nullptr);
}
