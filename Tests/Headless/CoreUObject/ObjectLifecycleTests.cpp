#include "ObjectTestTypes.h"

#include <gtest/gtest.h>

namespace
{
	UPackage* MakeTestPackage(const TCHAR* Name)
	{
		UPackage* Package = CreatePackage(Name);
		EXPECT_NE(Package, nullptr);
		return Package;
	}
}

TEST(ObjectLifecycle, NativeClassesRegisterWithTheirPackageAndSuper)
{
	UClass* Class = UTestReflectedObject::StaticClass();
	ASSERT_NE(Class, nullptr);
	EXPECT_EQ(Class->GetName(), TEXT("TestReflectedObject"));
	EXPECT_EQ(Class->GetPathName(), TEXT("/Script/CoreUObjectTests.TestReflectedObject"));
	EXPECT_EQ(Class->GetSuperClass(), UObject::StaticClass());
	EXPECT_EQ(Class->GetClass(), UClass::StaticClass());
	EXPECT_TRUE(Class->HasAnyClassFlags(CLASS_Native));
	EXPECT_EQ(UClass::StaticClass()->GetClass(), UClass::StaticClass());
	EXPECT_EQ(UObject::StaticClass()->GetPathName(), TEXT("/Script/CoreUObject.Object"));
	EXPECT_EQ(StaticFindObject(UClass::StaticClass(), nullptr, TEXT("/Script/CoreUObjectTests.TestReflectedChild")), UTestReflectedChild::StaticClass());
}

TEST(ObjectLifecycle, PathsFollowTheEngineDelimiters)
{
	UPackage* Package = MakeTestPackage(TEXT("/Game/Paths/Asset"));
	UTestReflectedObject* Asset = NewObject<UTestReflectedObject>(Package, TEXT("Asset"), RF_Public | RF_Standalone);
	ASSERT_NE(Asset, nullptr);
	UTestReflectedObject* Inner = NewObject<UTestReflectedObject>(Asset, TEXT("Inner"));
	UTestReflectedObject* Deeper = NewObject<UTestReflectedObject>(Inner, TEXT("Deeper"));

	EXPECT_EQ(Asset->GetPathName(), TEXT("/Game/Paths/Asset.Asset"));
	EXPECT_EQ(Inner->GetPathName(), TEXT("/Game/Paths/Asset.Asset:Inner"));
	EXPECT_EQ(Deeper->GetPathName(), TEXT("/Game/Paths/Asset.Asset:Inner.Deeper"));
	EXPECT_EQ(Asset->GetFullName(), TEXT("TestReflectedObject /Game/Paths/Asset.Asset"));
	EXPECT_EQ(Asset->GetFullName(nullptr, EObjectFullNameFlags::IncludeClassPackage), TEXT("/Script/CoreUObjectTests.TestReflectedObject /Game/Paths/Asset.Asset"));
	EXPECT_EQ(Deeper->GetFullGroupName(false), TEXT("Asset:Inner.Deeper"));
	EXPECT_EQ(Deeper->GetFullGroupName(true), TEXT("Asset:Inner"));
	EXPECT_EQ(Deeper->GetPackage(), Package);
	EXPECT_EQ(Deeper->GetOutermostObject(), Asset);
	EXPECT_EQ(Package->GetPathName(), TEXT("/Game/Paths/Asset"));
	EXPECT_TRUE(Asset->IsAsset());
	EXPECT_FALSE(Inner->IsAsset());
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), nullptr, TEXT("/Game/Paths/Asset.Asset:Inner.Deeper")), Deeper);
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), Asset, TEXT("Inner.Deeper")), Deeper);
}

TEST(ObjectLifecycle, UniqueNamesCountPerClassInsideTheOuter)
{
	UPackage* Package = MakeTestPackage(TEXT("/Game/Names/Counting"));
	UTestReflectedObject* First = NewObject<UTestReflectedObject>(Package);
	UTestReflectedObject* Second = NewObject<UTestReflectedObject>(Package);
	UTestReflectedChild* Child = NewObject<UTestReflectedChild>(Package);
	EXPECT_EQ(First->GetName(), TEXT("TestReflectedObject_0"));
	EXPECT_EQ(Second->GetName(), TEXT("TestReflectedObject_1"));
	EXPECT_EQ(Child->GetName(), TEXT("TestReflectedChild_0"));
	// A name taken by hand is skipped.
	NewObject<UTestReflectedObject>(Package, TEXT("TestReflectedObject_2"));
	EXPECT_EQ(MakeUniqueObjectName(Package, UTestReflectedObject::StaticClass()).ToString(), TEXT("TestReflectedObject_3"));
	EXPECT_EQ(MakeUniqueObjectName(Package, UTestReflectedObject::StaticClass(), TEXT("Node")).ToString(), TEXT("Node_4"));
}

TEST(ObjectLifecycle, BadRequestsFailWithoutCrashing)
{
	UPackage* Package = MakeTestPackage(TEXT("/Game/Names/Refused"));
	EXPECT_EQ(NewObject<UObject>(Package, UTestAbstractObject::StaticClass()), nullptr);
	EXPECT_EQ(NewObject<UObject>(Package, (UClass*)nullptr), nullptr);
	ASSERT_NE(NewObject<UTestReflectedObject>(Package, TEXT("Taken")), nullptr);
	EXPECT_EQ(NewObject<UTestReflectedObject>(Package, TEXT("Taken")), nullptr);
	EXPECT_EQ(NewObject<UTestReflectedObject>(Package, TEXT("Has.Dot")), nullptr);
	EXPECT_EQ(CreatePackage(TEXT("NoLeadingSlash")), nullptr);
	EXPECT_EQ(CreatePackage(TEXT("/Game//Double")), nullptr);
	EXPECT_EQ(StaticFindObject(nullptr, nullptr, TEXT("/Game/Names/Refused..Taken")), nullptr);
}

TEST(ObjectLifecycle, GarbageIsHiddenThenFreedByCollectGarbage)
{
	UPackage* Package = MakeTestPackage(TEXT("/Game/Garbage/Pkg"));
	const int32 DestroyedBefore = UTestLifetimeObject::Destroyed;
	UTestLifetimeObject* Doomed = NewObject<UTestLifetimeObject>(Package, TEXT("Doomed"));
	UTestLifetimeObject* Inner = NewObject<UTestLifetimeObject>(Doomed, TEXT("Inner"));
	UTestLifetimeObject* Survivor = NewObject<UTestLifetimeObject>(Package, TEXT("Survivor"));
	EXPECT_TRUE(Doomed->bPostInitCalled);
	Survivor->Other = Doomed;
	TWeakObjectPtr<UTestLifetimeObject> WeakDoomed(Doomed);

	Doomed->MarkAsGarbage();
	EXPECT_FALSE(IsValid(Doomed));
	EXPECT_TRUE(IsValid(Survivor));
	EXPECT_EQ(StaticFindObject(nullptr, Package, TEXT("Doomed")), nullptr);
	EXPECT_FALSE(WeakDoomed.IsValid());
	EXPECT_EQ(WeakDoomed.Get(true), Doomed);
	// Still readable until collected.
	EXPECT_EQ(Doomed->GetName(), TEXT("Doomed"));
	EXPECT_EQ(Inner->GetOuter(), Doomed);
	// The freed name can be used again at once.
	UTestLifetimeObject* Replacement = NewObject<UTestLifetimeObject>(Package, TEXT("Doomed"));
	ASSERT_NE(Replacement, nullptr);

	CollectGarbage(RF_NoFlags);
	EXPECT_EQ(UTestLifetimeObject::Destroyed - DestroyedBefore, 2);
	EXPECT_EQ(Survivor->Other, nullptr);
	EXPECT_TRUE(WeakDoomed.IsStale());
	EXPECT_EQ(WeakDoomed.Get(true), nullptr);
	EXPECT_EQ(StaticFindObject(nullptr, Package, TEXT("Doomed")), Replacement);
	TArray<UObject*> Remaining;
	GetObjectsWithOuter(Package, Remaining, true, RF_NoFlags);
	EXPECT_EQ(Remaining, TArray<UObject*>({ Survivor, Replacement }));
}

TEST(ObjectLifecycle, CollectingManyObjectsOfOneOuterKeepsTheHashesRight)
{
	UPackage* Package = MakeTestPackage(TEXT("/Game/Garbage/Crowd"));
	TArray<UObject*> Kept;
	for (int32 Index = 0; Index < 20000; ++Index)
	{
		UTestLifetimeObject* Object = NewObject<UTestLifetimeObject>(Package);
		if (Index % 1000 == 0)
		{
			Kept.Add(Object);
		}
		else
		{
			Object->MarkAsGarbage();
		}
	}
	CollectGarbage(RF_NoFlags);
	TArray<UObject*> Remaining;
	GetObjectsWithOuter(Package, Remaining, false, RF_NoFlags);
	EXPECT_EQ(Remaining, Kept);
	EXPECT_EQ(StaticFindObjectFast(nullptr, Package, Kept[1]->GetFName()), Kept[1]);
	EXPECT_EQ(StaticFindObjectFast(nullptr, Package, FName(TEXT("TestLifetimeObject"), 3)), nullptr);
}

TEST(ObjectLifecycle, RootedGarbageSurvivesCollection)
{
	UPackage* Package = MakeTestPackage(TEXT("/Game/Garbage/Rooted"));
	UTestLifetimeObject* Kept = NewObject<UTestLifetimeObject>(Package, TEXT("Kept"));
	Kept->AddToRoot();
	Kept->MarkAsGarbage();
	const int32 DestroyedBefore = UTestLifetimeObject::Destroyed;
	CollectGarbage(RF_NoFlags);
	EXPECT_EQ(UTestLifetimeObject::Destroyed, DestroyedBefore);
	EXPECT_TRUE(Kept->IsValidLowLevel());
	Kept->RemoveFromRoot();
	CollectGarbage(RF_NoFlags);
	EXPECT_EQ(UTestLifetimeObject::Destroyed, DestroyedBefore + 1);
}
