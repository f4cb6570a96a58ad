#include "ObjectTestTypes.h"

#include <gtest/gtest.h>

namespace
{
	constexpr EObjectFlags FieldFlags = RF_Public | RF_MarkAsNative | RF_Transient;

	/** A data-defined class built the way reflection-api.md tells the catalogue to. */
	UClass* MakeDataClass(const TCHAR* PackageName, const TCHAR* Name, UClass* Parent)
	{
		UPackage* Package = CreatePackage(PackageName);
		UClass* Class = NewObject<UClass>(Package, FName(Name), RF_Public | RF_Transient);
		Class->SetSuperStruct(Parent);
		Class->ClassFlags |= Parent->ClassFlags & CLASS_Inherit;
		// Declaration order is Health, DisplayName, Inventory: added last first, as AddCppProperty prepends.
		FArrayProperty* Inventory = new FArrayProperty(Class, TEXT("Inventory"), FieldFlags);
		Inventory->AddCppProperty(new FStrProperty(Inventory, TEXT("Inventory"), FieldFlags));
		Inventory->SetPropertyFlags(CPF_Edit | CPF_BlueprintVisible);
		Class->AddCppProperty(Inventory);
		FStrProperty* DisplayName = new FStrProperty(Class, TEXT("DisplayName"), FieldFlags);
		DisplayName->SetPropertyFlags(CPF_Edit);
		Class->AddCppProperty(DisplayName);
		FFloatProperty* Health = new FFloatProperty(Class, TEXT("Health"), FieldFlags);
		Health->SetPropertyFlags(CPF_Edit | CPF_BlueprintVisible);
		Health->SetMetaData(TEXT("Category"), TEXT("Stats"));
		Class->AddCppProperty(Health);
		Class->Bind();
		Class->StaticLink(true);
		return Class;
	}

	TArray<FString> PropertyNames(const UStruct* Struct, EFieldIteratorFlags::SuperClassFlags SuperFlags)
	{
		TArray<FString> Names;
		for (TFieldIterator<FProperty> It(Struct, SuperFlags); It; ++It)
		{
			Names.Add(It->GetName());
		}
		return Names;
	}
}

TEST(Reflection, NativeMembersHaveTheirCppOffsetsAndFlags)
{
	UClass* Class = UTestReflectedObject::StaticClass();
	FIntProperty* Count = CastField<FIntProperty>(Class->FindPropertyByName(TEXT("Count")));
	ASSERT_NE(Count, nullptr);
	EXPECT_EQ(Count->GetOffset_ForInternal(), STRUCT_OFFSET(UTestReflectedObject, Count));
	EXPECT_TRUE(Count->HasAllPropertyFlags(CPF_Edit | CPF_BlueprintVisible));
	EXPECT_TRUE(Count->HasAnyPropertyFlags(CPF_IsPlainOldData));
	EXPECT_FALSE(Count->HasAnyPropertyFlags(CPF_BlueprintReadOnly));
	EXPECT_EQ(Count->GetOwnerClass(), Class);
	EXPECT_EQ(Count->GetPathName(), TEXT("/Script/CoreUObjectTests.TestReflectedObject:Count"));
	EXPECT_EQ(Count->GetFullName(), TEXT("IntProperty /Script/CoreUObjectTests.TestReflectedObject:Count"));
	EXPECT_EQ(Count->GetClass()->GetName(), TEXT("IntProperty"));
	EXPECT_EQ(Class->GetPropertiesSize(), (int32)sizeof(UTestReflectedObject));

	UTestReflectedObject* Object = NewObject<UTestReflectedObject>();
	Object->Count = 41;
	EXPECT_EQ(*Count->ContainerPtrToValuePtr<int32>(Object), 41);
	Count->SetPropertyValue_InContainer(Object, 42);
	EXPECT_EQ(Object->Count, 42);

	// Reflected in the order written, super class members after the class's own.
	EXPECT_EQ(PropertyNames(UTestReflectedChild::StaticClass(), EFieldIteratorFlags::ExcludeSuper), TArray<FString>({ TEXT("ChildOnly") }));
	const TArray<FString> All = PropertyNames(UTestReflectedChild::StaticClass(), EFieldIteratorFlags::IncludeSuper);
	ASSERT_EQ(All.Num(), 12);
	EXPECT_EQ(All[0], TEXT("ChildOnly"));
	EXPECT_EQ(All[1], TEXT("Count"));
	EXPECT_EQ(All[11], TEXT("Mode"));
}

TEST(Reflection, CastsFollowTheClassChain)
{
	UTestReflectedChild* Child = NewObject<UTestReflectedChild>();
	UObject* AsObject = Child;
	EXPECT_EQ(Cast<UTestReflectedObject>(AsObject), Child);
	EXPECT_EQ(Cast<UTestReflectedChild>(AsObject), Child);
	EXPECT_EQ(Cast<UTestLifetimeObject>(AsObject), nullptr);
	EXPECT_EQ(Cast<UTestReflectedObject>((UObject*)nullptr), nullptr);
	EXPECT_EQ(ExactCast<UTestReflectedObject>(AsObject), nullptr);
	EXPECT_EQ(ExactCast<UTestReflectedChild>(AsObject), Child);
	EXPECT_EQ(CastChecked<UTestReflectedObject>(AsObject), Child);
	EXPECT_TRUE(Child->IsA<UObject>());
	EXPECT_TRUE(Child->IsA(UTestReflectedObject::StaticClass()));
	EXPECT_FALSE(Child->IsA(UClass::StaticClass()));
	EXPECT_TRUE(UTestReflectedChild::StaticClass()->IsChildOf(UTestReflectedObject::StaticClass()));
	EXPECT_FALSE(UTestReflectedObject::StaticClass()->IsChildOf(UTestReflectedChild::StaticClass()));
	EXPECT_TRUE(UClass::StaticClass()->HasAnyCastFlag(CASTCLASS_UStruct));
	EXPECT_EQ(Cast<UClass>((UObject*)UTestReflectedChild::StaticClass()), UTestReflectedChild::StaticClass());
	EXPECT_EQ(Cast<UStruct>((UObject*)UTestReflectedChild::StaticClass()), UTestReflectedChild::StaticClass());
	EXPECT_EQ(Cast<UScriptStruct>((UObject*)UTestReflectedChild::StaticClass()), nullptr);
}

TEST(Reflection, DataDefinedClassKeepsItsValuesBeyondTheCppPart)
{
	UClass* Class = MakeDataClass(TEXT("/Script/DataTest"), TEXT("DataActor"), UTestReflectedObject::StaticClass());
	ASSERT_NE(Class->ClassConstructor, nullptr);
	EXPECT_EQ(Class->GetNativeSize(), (int32)sizeof(UTestReflectedObject));
	EXPECT_EQ(PropertyNames(Class, EFieldIteratorFlags::ExcludeSuper), TArray<FString>({ TEXT("Health"), TEXT("DisplayName"), TEXT("Inventory") }));

	FFloatProperty* Health = CastField<FFloatProperty>(Class->FindPropertyByName(TEXT("Health")));
	FStrProperty* DisplayName = CastField<FStrProperty>(Class->FindPropertyByName(TEXT("DisplayName")));
	FArrayProperty* Inventory = CastField<FArrayProperty>(Class->FindPropertyByName(TEXT("Inventory")));
	ASSERT_TRUE(Health && DisplayName && Inventory);
	EXPECT_GE(Health->GetOffset_ForInternal(), (int32)sizeof(UTestReflectedObject));
	EXPECT_EQ(DisplayName->GetOffset_ForInternal() % (int32)alignof(FString), 0);
	EXPECT_LE(Inventory->GetOffset_ForInternal() + Inventory->GetSize(), Class->GetPropertiesSize());
	EXPECT_EQ(Health->GetMetaData(TEXT("Category")), TEXT("Stats"));

	// Defaults live on the class default object; new objects start from them.
	UObject* Defaults = Class->GetDefaultObject();
	ASSERT_NE(Defaults, nullptr);
	EXPECT_TRUE(Defaults->HasAllFlags(RF_ClassDefaultObject | RF_Public));
	EXPECT_EQ(Defaults->GetName(), TEXT("Default__DataActor"));
	EXPECT_EQ(Defaults->GetPathName(), TEXT("/Script/DataTest.Default__DataActor"));
	ASSERT_NE(Health->ImportText_InContainer(TEXT("75.5"), Defaults, nullptr, PPF_None), nullptr);
	ASSERT_NE(DisplayName->ImportText_InContainer(TEXT("Brave hero"), Defaults, nullptr, PPF_None), nullptr);
	ASSERT_NE(Inventory->ImportText_InContainer(TEXT("(\"Sword\",\"Shield\")"), Defaults, nullptr, PPF_None), nullptr);
	((UTestReflectedObject*)Defaults)->Count = 99;

	UPackage* Package = CreatePackage(TEXT("/Game/DataTest/Level"));
	UObject* Instance = NewObject<UObject>(Package, Class, TEXT("Hero"));
	ASSERT_NE(Instance, nullptr);
	EXPECT_EQ(Instance->GetClass(), Class);
	EXPECT_TRUE(Instance->IsA<UTestReflectedObject>());
	EXPECT_EQ(Health->GetPropertyValue_InContainer(Instance), 75.5f);
	EXPECT_EQ(DisplayName->GetPropertyValue_InContainer(Instance), TEXT("Brave hero"));
	FScriptArrayHelper_InContainer Items(Inventory, Instance);
	ASSERT_EQ(Items.Num(), 2);
	EXPECT_EQ(*(const FString*)Items.GetRawPtr(1), TEXT("Shield"));
	// Native members of a data-defined class come from the default object too.
	EXPECT_EQ(((UTestReflectedObject*)Instance)->Count, 99);

	// Changing the instance leaves the defaults alone.
	DisplayName->SetPropertyValue_InContainer(Instance, TEXT("Changed"));
	EXPECT_EQ(DisplayName->GetPropertyValue_InContainer(Defaults), TEXT("Brave hero"));

	// A data-defined subclass of the data-defined class lays its members after its parent's.
	UClass* SubClass = NewObject<UClass>(CreatePackage(TEXT("/Script/DataTest")), TEXT("DataHero"), RF_Public);
	SubClass->SetSuperStruct(Class);
	FIntProperty* Level = new FIntProperty(SubClass, TEXT("Level"), FieldFlags);
	SubClass->AddCppProperty(Level);
	SubClass->Bind();
	SubClass->StaticLink(true);
	EXPECT_GE(Level->GetOffset_ForInternal(), Class->GetPropertiesSize());
	Level->SetPropertyValue_InContainer(SubClass->GetDefaultObject(), 5);
	UObject* SubInstance = NewObject<UObject>(Package, SubClass);
	EXPECT_EQ(Level->GetPropertyValue_InContainer(SubInstance), 5);
	EXPECT_EQ(Health->GetPropertyValue_InContainer(SubInstance), 75.5f);
	EXPECT_EQ(SubInstance->GetName(), TEXT("DataHero_0"));

	// Freed cleanly (strings and arrays beyond the C++ part included).
	SubInstance->MarkAsGarbage();
	Instance->MarkAsGarbage();
	CollectGarbage(RF_NoFlags);
}

TEST(Reflection, FunctionsAndParametersAsTheCatalogueBuildsThem)
{
	UPackage* Package = CreatePackage(TEXT("/Script/FunctionTest"));
	UClass* Library = NewObject<UClass>(Package, TEXT("MathLibrary"), RF_Public);
	Library->SetSuperStruct(UObject::StaticClass());
	Library->Bind();
	Library->StaticLink(true);

	UFunction* Function = NewObject<UFunction>(Library, TEXT("Add_IntInt"), RF_Public);
	Function->FunctionFlags = FUNC_Final | FUNC_Native | FUNC_Static | FUNC_Public | FUNC_BlueprintCallable | FUNC_BlueprintPure;
	// Parameters A, B, ReturnValue: added last first.
	FIntProperty* ReturnValue = new FIntProperty(Function, TEXT("ReturnValue"), FieldFlags);
	ReturnValue->SetPropertyFlags(CPF_Parm | CPF_OutParm | CPF_ReturnParm);
	Function->AddCppProperty(ReturnValue);
	FIntProperty* B = new FIntProperty(Function, TEXT("B"), FieldFlags);
	B->SetPropertyFlags(CPF_Parm);
	Function->AddCppProperty(B);
	FIntProperty* A = new FIntProperty(Function, TEXT("A"), FieldFlags);
	A->SetPropertyFlags(CPF_Parm);
	Function->AddCppProperty(A);
	Function->SetMetaData(TEXT("CompactNodeTitle"), TEXT("+"));
	Function->Bind();
	Function->StaticLink(true);
	Library->AddFunctionToFunctionMap(Function, Function->GetFName());
	Function->Next = Library->Children;
	Library->Children = Function;

	EXPECT_EQ(Function->NumParms, 3);
	EXPECT_EQ(Function->ParmsSize, 12);
	EXPECT_EQ(Function->ReturnValueOffset, 8);
	EXPECT_EQ(Function->GetReturnProperty(), ReturnValue);
	EXPECT_EQ(Function->GetOwnerClass(), Library);
	EXPECT_TRUE(Function->HasAllFunctionFlags(FUNC_BlueprintPure | FUNC_Static));
	EXPECT_EQ(PropertyNames(Function, EFieldIteratorFlags::IncludeSuper), TArray<FString>({ TEXT("A"), TEXT("B"), TEXT("ReturnValue") }));
	EXPECT_EQ(Function->GetMetaData(TEXT("CompactNodeTitle")), TEXT("+"));
	EXPECT_EQ(Function->GetPathName(), TEXT("/Script/FunctionTest.MathLibrary:Add_IntInt"));

	// Found by name on the class and its subclasses, not on unrelated classes.
	UClass* Derived = NewObject<UClass>(Package, TEXT("DerivedLibrary"), RF_Public);
	Derived->SetSuperStruct(Library);
	Derived->Bind();
	Derived->StaticLink(true);
	EXPECT_EQ(Library->FindFunctionByName(TEXT("add_intint")), Function);
	EXPECT_EQ(Derived->FindFunctionByName(TEXT("Add_IntInt")), Function);
	EXPECT_EQ(Derived->FindFunctionByName(TEXT("Add_IntInt"), EIncludeSuperFlag::ExcludeSuper), nullptr);
	EXPECT_EQ(UObject::StaticClass()->FindFunctionByName(TEXT("Add_IntInt")), nullptr);
	int32 FunctionCount = 0;
	for (TFieldIterator<UFunction> It(Derived); It; ++It)
	{
		EXPECT_EQ(*It, Function);
		++FunctionCount;
	}
	EXPECT_EQ(FunctionCount, 1);
	EXPECT_FALSE(TFieldIterator<UFunction>(Derived, EFieldIteratorFlags::ExcludeSuper));

	// A signature with the same parameters is compatible; a different one is not.
	UFunction* Same = NewObject<UFunction>(Library, TEXT("Same"), RF_Public);
	for (const TCHAR* Name : { TEXT("ReturnValue"), TEXT("Y"), TEXT("X") })
	{
		FIntProperty* Param = new FIntProperty(Same, Name, FieldFlags);
		Param->SetPropertyFlags(FName(Name) == TEXT("ReturnValue") ? CPF_Parm | CPF_OutParm | CPF_ReturnParm : CPF_Parm);
		Same->AddCppProperty(Param);
	}
	Same->StaticLink(true);
	EXPECT_TRUE(Function->IsSignatureCompatibleWith(Same));
	UFunction* Different = NewObject<UFunction>(Library, TEXT("Different"), RF_Public);
	FFloatProperty* FloatParam = new FFloatProperty(Different, TEXT("A"), FieldFlags);
	FloatParam->SetPropertyFlags(CPF_Parm);
	Different->AddCppProperty(FloatParam);
	Different->StaticLink(true);
	EXPECT_FALSE(Function->IsSignatureCompatibleWith(Different));
}

TEST(Reflection, DisplayNamesFollowTheEngineRules)
{
	struct FCase
	{
		const TCHAR* Name;
		bool bIsBool;
		const TCHAR* Expected;
	};
	const FCase Cases[] = {
		{ TEXT("bIsHidden"), true, TEXT("Is Hidden") },
		{ TEXT("bIsHidden"), false, TEXT("B Is Hidden") },
		{ TEXT("bool"), true, TEXT("Bool") },
		{ TEXT("DrawScale3D"), false, TEXT("Draw Scale 3D") },
		{ TEXT("TimeToLive"), false, TEXT("Time to Live") },
		{ TEXT("ActorInstance"), false, TEXT("Actor Instance") },
		{ TEXT("Is_Valid_Name"), false, TEXT("Is Valid Name") },
		{ TEXT("HUDWidget"), false, TEXT("HUDWidget") },
		{ TEXT("K2_SetActorLocation"), false, TEXT("K2 Set Actor Location") },
		{ TEXT("Value-1.5"), false, TEXT("Value-1.5") },
		{ TEXT("lowercase"), false, TEXT("Lowercase") },
		{ TEXT("OnAndOff"), false, TEXT("On and Off") },
		{ TEXT("ForEachLoop"), false, TEXT("For Each Loop") },
		{ TEXT(""), false, TEXT("") },
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(U8(FName::NameToDisplayString(Case.Name, Case.bIsBool)), U8(Case.Expected));
	}
	UClass* Class = UTestReflectedObject::StaticClass();
	EXPECT_EQ(Class->GetDisplayNameText().ToString(), TEXT("Reflected Test Object"));
	EXPECT_EQ(UTestReflectedChild::StaticClass()->GetDisplayNameText().ToString(), TEXT("Test Reflected Child"));
	EXPECT_EQ(Class->FindPropertyByName(TEXT("bEnabled"))->GetDisplayNameText().ToString(), TEXT("Enabled"));
	EXPECT_EQ(Class->FindPropertyByName(TEXT("BigNumber"))->GetDisplayNameText().ToString(), TEXT("Big Number"));
}

TEST(Reflection, EnumNamesValuesAndDisplayNames)
{
	UPackage* Package = CreatePackage(TEXT("/Script/EnumTest"));
	UEnum* Regular = NewObject<UEnum>(Package, TEXT("ECollisionChannelTest"), RF_Public);
	TArray<TPair<FName, int64>> RegularNames;
	RegularNames.Emplace(TEXT("ECC_WorldStatic"), 0);
	RegularNames.Emplace(TEXT("ECC_WorldDynamic"), 1);
	RegularNames.Emplace(TEXT("ECC_Pawn"), 2);
	ASSERT_TRUE(Regular->SetEnums(RegularNames, UEnum::ECppForm::Regular));
	EXPECT_EQ(Regular->NumEnums(), 4);
	EXPECT_EQ(Regular->GetNameStringByIndex(3), TEXT("ECC_MAX"));
	EXPECT_EQ(Regular->GetValueByIndex(3), 3);
	EXPECT_TRUE(Regular->ContainsExistingMax());
	EXPECT_EQ(Regular->GetMaxEnumValue(), 3);
	EXPECT_EQ(Regular->GetNameByValue(2), FName(TEXT("ECC_Pawn")));
	EXPECT_EQ(Regular->GetValueByName(TEXT("ecc_pawn")), 2);
	EXPECT_EQ(Regular->GetValueByNameString(TEXT("ECC_Nothing")), INDEX_NONE);
	EXPECT_EQ(Regular->GetDisplayNameTextByValue(1).ToString(), TEXT("ECC World Dynamic"));
	Regular->SetMetaData(TEXT("DisplayName"), TEXT("World Static"), 0);
	EXPECT_EQ(Regular->GetDisplayNameTextByIndex(0).ToString(), TEXT("World Static"));
	EXPECT_TRUE(Regular->HasMetaData(TEXT("DisplayName"), 0));
	EXPECT_FALSE(Regular->HasMetaData(TEXT("DisplayName"), 1));
	EXPECT_FALSE(Regular->HasMetaData(TEXT("DisplayName")));

	UEnum* Scoped = NewObject<UEnum>(Package, TEXT("EMovementModeTest"), RF_Public);
	TArray<TPair<FName, int64>> ScopedNames;
	ScopedNames.Emplace(TEXT("EMovementModeTest::Walking"), 1);
	ScopedNames.Emplace(TEXT("EMovementModeTest::Flying"), 5);
	ASSERT_TRUE(Scoped->SetEnums(ScopedNames, UEnum::ECppForm::EnumClass));
	EXPECT_EQ(Scoped->GetNameByIndex(2), FName(TEXT("EMovementModeTest::EMovementModeTest_MAX")));
	EXPECT_EQ(Scoped->GetValueByIndex(2), 6);
	EXPECT_EQ(Scoped->GetNameStringByValue(5), TEXT("Flying"));
	EXPECT_EQ(Scoped->GetValueByNameString(TEXT("Flying")), 5);
	EXPECT_EQ(Scoped->GetValueByNameString(TEXT("EMovementModeTest::Walking")), 1);
	EXPECT_EQ(Scoped->GetIndexByNameString(TEXT("EOther::Walking")), INDEX_NONE);
	EXPECT_EQ(Scoped->GenerateFullEnumName(TEXT("Swimming")), TEXT("EMovementModeTest::Swimming"));
	EXPECT_EQ(Scoped->GetDisplayNameTextByValue(5).ToString(), TEXT("Flying"));

	// A duplicate entry is refused and changes nothing.
	TArray<TPair<FName, int64>> Duplicates;
	Duplicates.Emplace(TEXT("A"), 0);
	Duplicates.Emplace(TEXT("a"), 1);
	EXPECT_FALSE(Regular->SetEnums(Duplicates, UEnum::ECppForm::Regular));
	EXPECT_EQ(Regular->NumEnums(), 4);
}

TEST(Reflection, CoreStructsAreReflected)
{
	UScriptStruct* Vector = TBaseStructure<FVector>::Get();
	ASSERT_NE(Vector, nullptr);
	EXPECT_EQ(Vector->GetPathName(), TEXT("/Script/CoreUObject.Vector"));
	EXPECT_EQ(FindObject<UScriptStruct>(nullptr, TEXT("/Script/CoreUObject.Vector")), Vector);
	EXPECT_EQ(Vector->GetStructureSize(), (int32)sizeof(FVector));
	EXPECT_TRUE(Vector->HasAnyStructFlags(STRUCT_Atomic));
	EXPECT_TRUE(Vector->HasAnyStructFlags(STRUCT_Native));
	EXPECT_EQ(PropertyNames(Vector, EFieldIteratorFlags::IncludeSuper), TArray<FString>({ TEXT("X"), TEXT("Y"), TEXT("Z") }));
	EXPECT_NE(CastField<FDoubleProperty>(Vector->FindPropertyByName(TEXT("Z"))), nullptr);
	EXPECT_EQ(Vector->GetStructCPPName(), TEXT("FVector"));
	EXPECT_EQ(Vector->GetMetaData(TEXT("HasNativeMake")), TEXT("/Script/Engine.KismetMathLibrary.MakeVector"));
	EXPECT_EQ(PropertyNames(TBaseStructure<FColor>::Get(), EFieldIteratorFlags::IncludeSuper), TArray<FString>({ TEXT("B"), TEXT("G"), TEXT("R"), TEXT("A") }));
	EXPECT_EQ(TBaseStructure<FRotator>::Get()->FindPropertyByName(TEXT("Pitch"))->GetDisplayNameText().ToString(), TEXT("Y"));
	EXPECT_EQ(FSoftClassPath::StaticStruct()->GetSuperStruct(), FSoftObjectPath::StaticStruct());
	for (const TCHAR* Path : { TEXT("/Script/CoreUObject.Transform"), TEXT("/Script/CoreUObject.LinearColor"), TEXT("/Script/CoreUObject.Guid"),
			 TEXT("/Script/CoreUObject.Box2D"), TEXT("/Script/CoreUObject.IntPoint"), TEXT("/Script/CoreUObject.Quat"), TEXT("/Script/CoreUObject.Vector2D") })
	{
		EXPECT_NE(FindObject<UScriptStruct>(nullptr, Path), nullptr) << FStringToUTF8(Path);
	}
}
