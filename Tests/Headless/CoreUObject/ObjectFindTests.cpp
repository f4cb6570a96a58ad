#include "ObjectTestTypes.h"

#include <gtest/gtest.h>

TEST(ObjectFind, FindFirstObjectBySpellings)
{
	UClass* Class = UTestReflectedObject::StaticClass();
	EXPECT_EQ(FindFirstObject<UClass>(TEXT("TestReflectedObject")), Class);
	EXPECT_EQ(FindFirstObject<UClass>(TEXT("testreflectedobject")), Class);
	EXPECT_EQ(FindFirstObject<UClass>(TEXT("/Script/CoreUObjectTests.TestReflectedObject")), Class);
	EXPECT_EQ(FindFirstObject<UClass>(TEXT("Class'/Script/CoreUObjectTests.TestReflectedObject'")), Class);
	EXPECT_EQ(FindFirstObject<UClass>(TEXT("UTestReflectedObject")), nullptr);
	EXPECT_EQ(FindFirstObject<UClass>(TEXT("")), nullptr);
	EXPECT_EQ(UClass::TryFindTypeSlow<UClass>(TEXT(" TestReflectedChild ")), UTestReflectedChild::StaticClass());
	EXPECT_EQ(UClass::TryFindTypeSlow<UScriptStruct>(TEXT("Vector")), TBaseStructure<FVector>::Get());
	EXPECT_EQ(UClass::TryConvertShortTypeNameToPathName(UClass::StaticClass(), TEXT("Object")).ToString(), TEXT("/Script/CoreUObject.Object"));
	EXPECT_EQ(FindObject<UClass>(FTopLevelAssetPath(TEXT("/Script/CoreUObjectTests.TestReflectedChild"))), UTestReflectedChild::StaticClass());
	// The wrong type is not found.
	EXPECT_EQ(FindFirstObject<UScriptStruct>(TEXT("TestReflectedObject")), nullptr);

	// An ambiguous short name gives the first made, or the native one when asked.
	UPackage* Package = CreatePackage(TEXT("/Game/Find/Ambiguous"));
	UClass* Shadow = NewObject<UClass>(Package, TEXT("TestReflectedChild"), RF_Public);
	ASSERT_NE(Shadow, nullptr);
	EXPECT_EQ(FindFirstObject<UClass>(TEXT("TestReflectedChild"), EFindFirstObjectOptions::NativeFirst), UTestReflectedChild::StaticClass());
	EXPECT_EQ(FindFirstObject<UClass>(TEXT("TestReflectedChild")), UTestReflectedChild::StaticClass());
	Shadow->MarkAsGarbage();
}

TEST(ObjectFind, IterationFollowsCreationOrderAndSkipsGarbage)
{
	UPackage* Package = CreatePackage(TEXT("/Game/Find/Iterate"));
	TArray<UTestReflectedChild*> Made;
	for (int32 Index = 0; Index < 5; ++Index)
	{
		Made.Add(NewObject<UTestReflectedChild>(Package));
	}
	Made[2]->MarkAsGarbage();

	TArray<UObject*> Found;
	GetObjectsOfClass(UTestReflectedChild::StaticClass(), Found);
	TArray<UObject*> InPackage = Found.FilterByPredicate([Package](UObject* Object) { return Object->GetOuter() == Package; });
	ASSERT_EQ(InPackage.Num(), 4);
	EXPECT_EQ(InPackage[0], Made[0]);
	EXPECT_EQ(InPackage[1], Made[1]);
	EXPECT_EQ(InPackage[2], Made[3]);
	EXPECT_EQ(InPackage[3], Made[4]);

	int32 Iterated = 0;
	UObject* Previous = nullptr;
	for (TObjectIterator<UTestReflectedChild> It; It; ++It)
	{
		if (It->GetOuter() == Package)
		{
			EXPECT_NE(*It, Made[2]);
			if (Previous)
			{
				EXPECT_LT(Previous->GetUniqueID(), It->GetUniqueID());
			}
			Previous = *It;
			++Iterated;
		}
	}
	EXPECT_EQ(Iterated, 4);

	// Only exact classes, when asked.
	TArray<UObject*> Exact;
	GetObjectsOfClass(UTestReflectedObject::StaticClass(), Exact, false);
	EXPECT_FALSE(Exact.ContainsByPredicate([](UObject* Object) { return Object->GetClass() != UTestReflectedObject::StaticClass(); }));

	TArray<UObject*> Inside;
	NewObject<UTestReflectedObject>(Made[0], TEXT("Nested"));
	GetObjectsWithOuter(Package, Inside, false);
	EXPECT_EQ(Inside.Num(), 4);
	Inside.Reset();
	GetObjectsWithOuter(Package, Inside, true);
	EXPECT_EQ(Inside.Num(), 5);
	EXPECT_EQ(FindObjectWithOuter(Made[0], nullptr, TEXT("Nested"))->GetName(), TEXT("Nested"));

	TArray<UClass*> Derived;
	GetDerivedClasses(UTestReflectedObject::StaticClass(), Derived);
	EXPECT_TRUE(Derived.Contains(UTestReflectedChild::StaticClass()));
	EXPECT_FALSE(Derived.Contains(UTestReflectedObject::StaticClass()));
}

TEST(ObjectFind, RenameMovesTheObjectInTheHashes)
{
	UPackage* Package = CreatePackage(TEXT("/Game/Find/Rename"));
	UPackage* Other = CreatePackage(TEXT("/Game/Find/RenameTarget"));
	UTestReflectedObject* Object = NewObject<UTestReflectedObject>(Package, TEXT("Before"));
	NewObject<UTestReflectedObject>(Package, TEXT("Taken"));
	EXPECT_FALSE(Object->Rename(TEXT("Taken"), nullptr, REN_Test));
	EXPECT_FALSE(Object->Rename(TEXT("Bad.Name")));
	EXPECT_TRUE(Object->Rename(TEXT("After")));
	EXPECT_EQ(StaticFindObject(nullptr, Package, TEXT("Before")), nullptr);
	EXPECT_EQ(StaticFindObject(nullptr, Package, TEXT("After")), Object);
	EXPECT_TRUE(Package->IsDirty());
	EXPECT_TRUE(Object->Rename(nullptr, Other));
	EXPECT_EQ(Object->GetPathName(), TEXT("/Game/Find/RenameTarget.After"));
	EXPECT_FALSE(Object->Rename(nullptr, Object));
}

TEST(ObjectFind, DuplicateCopiesValuesAndRedirectsInnerReferences)
{
	UPackage* Package = CreatePackage(TEXT("/Game/Find/Duplicate"));
	UTestReflectedObject* Source = NewObject<UTestReflectedObject>(Package, TEXT("Source"), RF_Public | RF_Transactional);
	UTestReflectedObject* Inner = NewObject<UTestReflectedObject>(Source, TEXT("Inner"));
	UTestReflectedObject* Outside = NewObject<UTestReflectedObject>(Package, TEXT("Outside"));
	Source->Count = 12;
	Source->Notes = { TEXT("one"), TEXT("two") };
	Source->Target = Inner;
	Inner->Target = Outside;
	Inner->Label = TEXT("Inner label");

	TMap<UObject*, UObject*> Created;
	FObjectDuplicationParameters Parameters(Source, Package);
	Parameters.DestName = TEXT("Copy");
	Parameters.CreatedObjects = &Created;
	UTestReflectedObject* Copy = Cast<UTestReflectedObject>(StaticDuplicateObjectEx(Parameters));
	ASSERT_NE(Copy, nullptr);
	EXPECT_EQ(Copy->GetName(), TEXT("Copy"));
	EXPECT_TRUE(Copy->HasAnyFlags(RF_Transactional));
	EXPECT_EQ(Copy->Count, 12);
	EXPECT_EQ(Copy->Notes.Num(), 2);
	UTestReflectedObject* CopiedInner = Cast<UTestReflectedObject>(StaticFindObject(nullptr, Copy, TEXT("Inner")));
	ASSERT_NE(CopiedInner, nullptr);
	EXPECT_EQ(Copy->Target, CopiedInner);
	EXPECT_EQ(CopiedInner->Target, Outside);
	EXPECT_EQ(U8(CopiedInner->Label), "Inner label");
	EXPECT_EQ(Created.Num(), 2);
	EXPECT_EQ(Created.FindRef(Inner), CopiedInner);
	EXPECT_EQ(DuplicateObject<UTestReflectedObject>(Source, nullptr)->GetPackage(), GetTransientPackage());
	EXPECT_EQ(DuplicateObject<UTestReflectedObject>(Source, Inner), nullptr);
}

TEST(ObjectFind, SoftPathsAndTopLevelPaths)
{
	UPackage* Package = CreatePackage(TEXT("/Game/Find/Soft"));
	UTestReflectedObject* Asset = NewObject<UTestReflectedObject>(Package, TEXT("Soft"), RF_Public);
	UTestReflectedObject* Sub = NewObject<UTestReflectedObject>(Asset, TEXT("Sub"));

	struct FPathCase
	{
		const TCHAR* Input;
		const TCHAR* ToString;
		const TCHAR* PackageName;
		const TCHAR* AssetName;
		const TCHAR* SubPath;
	};
	const FPathCase Cases[] = {
		{ TEXT("/Game/Find/Soft.Soft"), TEXT("/Game/Find/Soft.Soft"), TEXT("/Game/Find/Soft"), TEXT("Soft"), TEXT("") },
		{ TEXT("/Game/Find/Soft.Soft:Sub"), TEXT("/Game/Find/Soft.Soft:Sub"), TEXT("/Game/Find/Soft"), TEXT("Soft"), TEXT("Sub") },
		{ TEXT("/Script/CoreUObjectTests.TestReflectedObject'/Game/Find/Soft.Soft'"), TEXT("/Game/Find/Soft.Soft"), TEXT("/Game/Find/Soft"), TEXT("Soft"), TEXT("") },
		{ TEXT("/Game/Find/Soft"), TEXT("/Game/Find/Soft"), TEXT("/Game/Find/Soft"), TEXT("None"), TEXT("") },
		{ TEXT("None"), TEXT(""), TEXT("None"), TEXT("None"), TEXT("") },
		{ TEXT("NoSlash.Asset"), TEXT(""), TEXT("None"), TEXT("None"), TEXT("") },
		{ TEXT("/Game/Find/Soft."), TEXT(""), TEXT("None"), TEXT("None"), TEXT("") },
	};
	for (const FPathCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Input));
		FSoftObjectPath Path(Case.Input);
		EXPECT_EQ(U8(Path.ToString()), U8(Case.ToString));
		EXPECT_EQ(U8(Path.GetLongPackageFName().ToString()), U8(Case.PackageName));
		EXPECT_EQ(U8(Path.GetAssetFName().ToString()), U8(Case.AssetName));
		EXPECT_EQ(U8(Path.GetSubPathString()), U8(Case.SubPath));
	}
	EXPECT_EQ(FSoftObjectPath(TEXT("/Game/Find/Soft.Soft:Sub")).ResolveObject(), Sub);
	EXPECT_EQ(FSoftObjectPath(Sub).ToString(), TEXT("/Game/Find/Soft.Soft:Sub"));
	EXPECT_EQ(FSoftObjectPath(TEXT("/Game/Find/Soft.Soft")).TryLoad(), Asset);
	EXPECT_EQ(FSoftObjectPath(TEXT("/Game/Find/Soft")).TryLoad(), Package);
	EXPECT_TRUE(FSoftObjectPath(TEXT("/Game/Find/Soft.Soft")).IsAsset());
	EXPECT_TRUE(FSoftObjectPath(TEXT("/Game/Find/Soft.Soft:Sub")).IsSubobject());

	TSoftObjectPtr<UTestReflectedObject> SoftPtr(Asset);
	EXPECT_EQ(SoftPtr.Get(), Asset);
	EXPECT_EQ(SoftPtr.ToString(), TEXT("/Game/Find/Soft.Soft"));
	TSoftClassPtr<UObject> SoftClass(UTestReflectedChild::StaticClass());
	EXPECT_EQ(SoftClass.Get(), UTestReflectedChild::StaticClass());

	FTopLevelAssetPath TopLevel;
	EXPECT_TRUE(TopLevel.TrySetPath(TEXT("/Script/Engine.Actor")));
	EXPECT_EQ(TopLevel.GetPackageName(), FName(TEXT("/Script/Engine")));
	EXPECT_EQ(TopLevel.GetAssetName(), FName(TEXT("Actor")));
	EXPECT_EQ(TopLevel.ToString(), TEXT("/Script/Engine.Actor"));
	EXPECT_FALSE(TopLevel.TrySetPath(TEXT("/Game/A.B:C")));
	EXPECT_TRUE(TopLevel.IsNull());
	EXPECT_FALSE(TopLevel.TrySetPath(TEXT("/Game/A.B.C")));
	EXPECT_FALSE(TopLevel.TrySetPath(TEXT("Actor")));
	EXPECT_EQ(FTopLevelAssetPath(Sub).ToString(), TEXT(""));
	EXPECT_EQ(FTopLevelAssetPath(Asset).ToString(), TEXT("/Game/Find/Soft.Soft"));
	EXPECT_EQ(UTestReflectedObject::StaticClass()->GetStructPathName().ToString(), TEXT("/Script/CoreUObjectTests.TestReflectedObject"));
}

TEST(ObjectFind, PackagesTrackDirtinessAndTheirAsset)
{
	UPackage* Package = CreatePackage(TEXT("/Game/Find/Dirty"));
	EXPECT_TRUE(Package->HasAnyPackageFlags(PKG_NewlyCreated));
	EXPECT_FALSE(Package->IsDirty());
	UTestReflectedObject* Asset = NewObject<UTestReflectedObject>(Package, TEXT("Dirty"), RF_Public);
	NewObject<UTestReflectedObject>(Package, TEXT("Other"), RF_Public);
	EXPECT_EQ(Package->FindAssetInPackage(), Asset);
	int32 Notifications = 0;
	const FDelegateHandle Handle = UPackage::PackageMarkedDirtyEvent.AddLambda([&](UPackage* Dirtied, bool bWasDirty) {
		if (Dirtied == Package)
		{
			++Notifications;
		}
	});
	Asset->Modify();
	EXPECT_TRUE(Package->IsDirty());
	Asset->MarkPackageDirty();
	EXPECT_EQ(Notifications, 2);
	UPackage::PackageMarkedDirtyEvent.Remove(Handle);
	Package->SetDirtyFlag(false);
	UTestReflectedObject* Temporary = NewObject<UTestReflectedObject>(Package, TEXT("Temporary"), RF_Transient);
	EXPECT_FALSE(Temporary->MarkPackageDirty());
	EXPECT_FALSE(Package->IsDirty());
	UTestReflectedObject* InTransient = NewObject<UTestReflectedObject>();
	EXPECT_FALSE(InTransient->MarkPackageDirty());
	EXPECT_FALSE(GetTransientPackage()->IsDirty());
	EXPECT_TRUE(UObject::StaticClass()->GetPackage()->HasAnyPackageFlags(PKG_CompiledIn));
	EXPECT_FALSE(UObject::StaticClass()->IsAsset());
}

namespace
{
	TArray<FString> GCallbackLog;

	void SecondQueuedCallback()
	{
		GCallbackLog.Add(TEXT("second"));
	}

	void FirstQueuedCallback()
	{
		// Everything registered so far is findable, what this makes is findable at once, and a lookup made here
		// neither runs this callback again nor the one queued below before this one ends.
		static UE::CoreUObject::Private::FRegisterCompiledInCallback QueueSecond(&SecondQueuedCallback);
		const bool bNativeFound = FindObject<UClass>(nullptr, TEXT("/Script/CoreUObjectTests.TestReflectedObject")) != nullptr;
		UClass* Made = NewObject<UClass>(CreatePackage(TEXT("/Script/CallbackTest")), TEXT("MadeByCallback"), RF_Public);
		Made->SetSuperStruct(UObject::StaticClass());
		Made->Bind();
		Made->StaticLink(true);
		const bool bMadeFound = FindObject<UClass>(nullptr, TEXT("/Script/CallbackTest.MadeByCallback")) == Made;
		GCallbackLog.Add(FString::Printf(TEXT("first native=%d made=%d"), bNativeFound ? 1 : 0, bMadeFound ? 1 : 0));
	}
}

TEST(ObjectFind, QueuedCallbacksRunOnceBeforeTheLookupThatTriggersThem)
{
	GCallbackLog.Reset();
	static UE::CoreUObject::Private::FRegisterCompiledInCallback QueueFirst(&FirstQueuedCallback);
	EXPECT_TRUE(GCallbackLog.IsEmpty());
	// The first lookup by path runs the queue before it looks.
	EXPECT_NE(StaticFindObject(UClass::StaticClass(), nullptr, TEXT("/Script/CallbackTest.MadeByCallback")), nullptr);
	ASSERT_EQ(GCallbackLog.Num(), 2);
	EXPECT_EQ(U8(GCallbackLog[0]), "first native=1 made=1");
	EXPECT_EQ(U8(GCallbackLog[1]), "second");
	StaticFindObject(UClass::StaticClass(), nullptr, TEXT("/Script/CallbackTest.MadeByCallback"));
	EXPECT_EQ(GCallbackLog.Num(), 2);
}
