#include "ObjectTestTypes.h"

#include <gtest/gtest.h>

TEST(ObjectDefaults, ClassDefaultObjectsHoldTheConstructorValues)
{
	const UTestReflectedObject* Defaults = GetDefault<UTestReflectedObject>();
	ASSERT_NE(Defaults, nullptr);
	EXPECT_TRUE(Defaults->HasAllFlags(RF_ClassDefaultObject | RF_Public | RF_ArchetypeObject));
	EXPECT_EQ(Defaults->GetPathName(), TEXT("/Script/CoreUObjectTests.Default__TestReflectedObject"));
	EXPECT_EQ(Defaults->Count, 7);
	EXPECT_EQ(UTestReflectedObject::StaticClass()->GetDefaultObject(), Defaults);
	EXPECT_TRUE(Defaults->IsTemplate());
	// Default objects are not found by iteration unless asked for.
	for (TObjectIterator<UTestReflectedObject> It; It; ++It)
	{
		EXPECT_FALSE(It->HasAnyFlags(RF_ClassDefaultObject));
	}
	// Abstract classes have default objects too.
	EXPECT_NE(UTestAbstractObject::StaticClass()->GetDefaultObject(), nullptr);
	// A native class's objects come from its constructor, not from edits to the default object.
	GetMutableDefault<UTestReflectedObject>()->Count = 1000;
	EXPECT_EQ(NewObject<UTestReflectedObject>()->Count, 7);
	GetMutableDefault<UTestReflectedObject>()->Count = 7;
}

TEST(ObjectDefaults, DefaultSubobjectsAndNativeInterfaces)
{
	UPackage* Package = CreatePackage(TEXT("/Game/Defaults/Owner"));
	UTestOwnerObject* Owner = NewObject<UTestOwnerObject>(Package, TEXT("Owner"), RF_Public | RF_Transactional);
	ASSERT_NE(Owner, nullptr);
	ASSERT_NE(Owner->Component, nullptr);
	EXPECT_EQ(Owner->Component->GetOuter(), Owner);
	EXPECT_EQ(Owner->Component->GetPathName(), TEXT("/Game/Defaults/Owner.Owner:Component"));
	EXPECT_TRUE(Owner->Component->HasAnyFlags(RF_DefaultSubObject));
	EXPECT_TRUE(Owner->Component->HasAnyFlags(RF_Transactional));
	EXPECT_EQ(Owner->GetDefaultSubobjectByName(TEXT("Component")), Owner->Component);
	const UTestOwnerObject* Defaults = GetDefault<UTestOwnerObject>();
	EXPECT_TRUE(Defaults->Component->HasAnyFlags(RF_ArchetypeObject));

	// The interface is found on the object, and Cast reaches its native part.
	EXPECT_TRUE(UTestOwnerObject::StaticClass()->ImplementsInterface(UTestInterface::StaticClass()));
	EXPECT_FALSE(UTestReflectedObject::StaticClass()->ImplementsInterface(UTestInterface::StaticClass()));
	ITestInterface* Interface = Cast<ITestInterface>((UObject*)Owner);
	ASSERT_NE(Interface, nullptr);
	EXPECT_EQ(Interface, static_cast<ITestInterface*>(Owner));
	EXPECT_EQ(Interface->GetAnswer(), 42);
	EXPECT_EQ(Cast<ITestInterface>((UObject*)Owner->Component.Get()), nullptr);
	EXPECT_TRUE(UTestInterface::StaticClass()->HasAllClassFlags(CLASS_Interface | CLASS_Native));

	TScriptInterface<ITestInterface> Script(Owner);
	EXPECT_EQ(Script.GetObject(), Owner);
	EXPECT_EQ(Script->GetAnswer(), 42);

	// The subobject goes with its owner.
	Owner->MarkAsGarbage();
	TWeakObjectPtr<UTestReflectedObject> WeakComponent(Owner->Component.Get());
	CollectGarbage(RF_NoFlags);
	EXPECT_TRUE(WeakComponent.IsStale());
}

TEST(ObjectDefaults, DataPropertiesOnANativeClassWithNativeChildrenAreRefused)
{
	// Adding a data-defined member to a native class would put it where its native subclass keeps C++ members.
	UClass* Parent = UTestLifetimeObject::StaticClass();
	FIntProperty* Added = new FIntProperty(Parent, TEXT("AddedLater"), RF_Public);
	Parent->AddCppProperty(Added);
	Parent->StaticLink(false);
	EXPECT_GE(Added->GetOffset_ForInternal(), (int32)sizeof(UTestLifetimeObject));
	UObject* Object = NewObject<UTestLifetimeObject>();
	ASSERT_NE(Object, nullptr);
	Added->SetPropertyValue_InContainer(Object, 77);
	EXPECT_EQ(Added->GetPropertyValue_InContainer(Object), 77);
	EXPECT_EQ(((UTestLifetimeObject*)Object)->Other, nullptr);
	// A class whose C++ part is larger than the parent's native part would overlap: refused.
	UClass* Child = NewObject<UClass>(CreatePackage(TEXT("/Script/OverlapTest")), TEXT("FakeNativeChild"), RF_Public);
	Child->SetSuperStruct(Parent);
	Child->SetNativeLayout(Parent->GetPropertiesSize() + 64, 8);
	Child->Bind();
	Child->StaticLink(true);
	EXPECT_EQ(NewObject<UObject>(GetTransientPackage(), Child), nullptr);
}

TEST(ObjectDefaults, WithinClassesStillHaveDefaultObjects)
{
	// As AnimInstance is Within SkeletalMeshComponent: instances must live inside the Within class, the default
	// object lives in the class's package and still gives instances their defaults.
	UPackage* Script = CreatePackage(TEXT("/Script/WithinTest"));
	UClass* Inner = NewObject<UClass>(Script, TEXT("InnerPart"), RF_Public);
	Inner->SetSuperStruct(UObject::StaticClass());
	Inner->ClassWithin = UTestReflectedObject::StaticClass();
	FIntProperty* Level = new FIntProperty(Inner, TEXT("Level"), RF_Public | RF_MarkAsNative | RF_Transient);
	Inner->AddCppProperty(Level);
	Inner->Bind();
	Inner->StaticLink(true);

	UObject* Defaults = Inner->GetDefaultObject();
	ASSERT_NE(Defaults, nullptr);
	EXPECT_EQ(Defaults->GetOuter(), Script);
	Level->SetPropertyValue_InContainer(Defaults, 4);

	EXPECT_EQ(NewObject<UObject>(CreatePackage(TEXT("/Game/Within/Loose")), Inner), nullptr);
	UTestReflectedObject* Holder = NewObject<UTestReflectedObject>(CreatePackage(TEXT("/Game/Within/Holder")), TEXT("Holder"));
	UObject* Part = NewObject<UObject>(Holder, Inner, TEXT("Part"));
	ASSERT_NE(Part, nullptr);
	EXPECT_EQ(Level->GetPropertyValue_InContainer(Part), 4);
}
