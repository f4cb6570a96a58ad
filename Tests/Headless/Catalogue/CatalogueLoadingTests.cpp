#include "CatalogueTestUtils.h"

#include "UObject/Interface.h"
#include "UObject/Package.h"
#include "UObject/UObjectIterator.h"

using namespace CatalogueTest;

namespace
{
	/** Registers one extra document and returns the error ("" on success). */
	std::string RegisterDocument(const TCHAR* ModuleName, const char* Json)
	{
		TArray<UE::Catalogue::FCatalogueDocument> Documents;
		Documents.Add({ FString(ModuleName), UTF8ToFString(Json) });
		FString Error;
		StartCatalogue();
		const bool bOk = UE::Catalogue::RegisterCatalogueDocuments(Documents, Error);
		EXPECT_EQ(bOk, Error.IsEmpty()) << U8(Error);
		return U8(Error);
	}
}

TEST(CatalogueLoading, StartingTheModuleRegistersTheCatalogue)
{
	StartCatalogue();
	EXPECT_TRUE(FModuleManager::Get().IsModuleLoaded(TEXT("Catalogue")));
	EXPECT_TRUE(UE::Catalogue::IsEngineCatalogueRegistered());
	EXPECT_NE(FindObject<UClass>(nullptr, TEXT("/Script/Engine.Actor")), nullptr);
	// The object system's own classes are completed, never duplicated.
	EXPECT_EQ(FindObject<UClass>(nullptr, TEXT("/Script/CoreUObject.Enum")), UEnum::StaticClass());
	EXPECT_EQ(FindObject<UClass>(nullptr, TEXT("/Script/CoreUObject.Interface")), UInterface::StaticClass());
	EXPECT_EQ(FindObject<UScriptStruct>(nullptr, TEXT("/Script/CoreUObject.Vector")), TBaseStructure<FVector>::Get());
	// UObject gains the function the catalogue declares for it, and only that.
	const UFunction* Ubergraph = UObject::StaticClass()->FindFunctionByName(TEXT("ExecuteUbergraph"));
	ASSERT_NE(Ubergraph, nullptr);
	EXPECT_TRUE(Ubergraph->HasAllFunctionFlags(FUNC_Event | FUNC_BlueprintEvent));
	EXPECT_FALSE(Ubergraph->HasAnyFunctionFlags(FUNC_Native));
	EXPECT_EQ(MetaOf(Ubergraph, TEXT("BlueprintInternalUseOnly")), "true");
	EXPECT_EQ(NamesOf(ParametersOf(Ubergraph)), (std::vector<std::string>{ "EntryPoint" }));
	int32 NumNamedEnum = 0;
	for (TObjectIterator<UClass> It; It; ++It)
	{
		NumNamedEnum += It->GetName() == TEXT("Enum") ? 1 : 0;
	}
	EXPECT_EQ(NumNamedEnum, 1);
}

TEST(CatalogueLoading, TheEngineCatalogueRegistersOnceAndCompletely)
{
	StartCatalogue();
	FString Error;
	EXPECT_TRUE(UE::Catalogue::RegisterEngineCatalogue(&Error)) << U8(Error);
	EXPECT_TRUE(Error.IsEmpty());
	EXPECT_TRUE(UE::Catalogue::IsEngineCatalogueRegistered());

	const UE::Catalogue::FCatalogueStats Stats = UE::Catalogue::GetCatalogueStats();
	EXPECT_EQ(Stats.NumModules, 13);
	EXPECT_GE(Stats.NumClasses, 180);
	EXPECT_GE(Stats.NumFunctions, 2700);
	EXPECT_GE(Stats.NumStructs, 150);
	EXPECT_GE(Stats.NumEnums, 150);
	EXPECT_GE(Stats.NumDelegates, 90);

	// A second registration creates nothing new.
	UClass* Actor = FindObject<UClass>(nullptr, TEXT("/Script/Engine.Actor"));
	EXPECT_TRUE(UE::Catalogue::RegisterEngineCatalogue());
	EXPECT_EQ(FindObject<UClass>(nullptr, TEXT("/Script/Engine.Actor")), Actor);
	EXPECT_EQ(UE::Catalogue::GetCatalogueStats().NumClasses, Stats.NumClasses);

	// Script packages hold the types and are never saved.
	UPackage* Engine = FindObject<UPackage>(nullptr, TEXT("/Script/Engine"));
	ASSERT_NE(Engine, nullptr);
	EXPECT_TRUE(Engine->HasAnyPackageFlags(PKG_CompiledIn));
	EXPECT_EQ(Actor->GetOuter(), Engine);
}

TEST(CatalogueLoading, EveryCatalogueClassIsLinkedAndConstructible)
{
	StartCatalogue();
	int32 Checked = 0;
	for (TObjectIterator<UClass> It; It; ++It)
	{
		UClass* Class = *It;
		if (!UE::Catalogue::IsCatalogueType(Class) || Class->HasAnyClassFlags(CLASS_Abstract))
		{
			continue;
		}
		SCOPED_TRACE(U8(Class->GetPathName()));
		ASSERT_NE(Class->ClassConstructor, nullptr);
		EXPECT_GE(Class->GetPropertiesSize(), Class->GetSuperClass()->GetPropertiesSize());
		// A class that must live inside another (AnimInstance within SkeletalMeshComponent) gets such an outer.
		UObject* Outer = GetTransientPackage();
		if (Class->ClassWithin && Class->ClassWithin != UObject::StaticClass())
		{
			Outer = NewObject<UObject>(GetTransientPackage(), Class->ClassWithin);
			ASSERT_NE(Outer, nullptr);
		}
		UObject* Object = NewObject<UObject>(Outer, Class);
		ASSERT_NE(Object, nullptr);
		EXPECT_EQ(Object->GetClass(), Class);
		++Checked;
	}
	EXPECT_GT(Checked, 100);
}

TEST(CatalogueLoading, ExtraDocumentsBuildTypesLikeTheEmbeddedOnes)
{
	const std::string Error = RegisterDocument(TEXT("CatalogueTestGood"), R"({"format":"calvorn-catalogue","version":1,"module":"CatalogueTestGood",
"enums":[{"name":"ETestMode","form":"EnumClass","underlying":"uint8","values":[{"name":"Off","value":0},{"name":"On","value":1,"meta":{"DisplayName":"Switched On"}}]}],
"structs":[{"name":"TestPair","properties":[{"name":"Count","kind":"int","flags":["Edit","BlueprintVisible"]},{"name":"Label","kind":"string","flags":["BlueprintVisible"]}]}],
"delegates":[{"name":"TestSignal__DelegateSignature","flags":["Public","Delegate","MulticastDelegate"],"params":[{"name":"Value","kind":"int","flags":["Parm"]}]}],
"classes":[{"name":"TestThing","super":"/Script/Engine.Actor","flags":["Native"],"meta":{"BlueprintType":"true"},
 "properties":[{"name":"Mode","kind":"enum","enum":"/Script/CatalogueTestGood.ETestMode","underlying":"byte","flags":["BlueprintVisible"],"default":"On"},
  {"name":"Pair","kind":"struct","struct":"/Script/CatalogueTestGood.TestPair","flags":["BlueprintVisible"]},
  {"name":"Names","kind":"map","key":{"kind":"name"},"value":{"kind":"array","inner":{"kind":"string"}},"flags":["Edit"]},
  {"name":"OnSignal","kind":"mcdelegate","signature":"/Script/CatalogueTestGood.TestSignal__DelegateSignature","flags":["BlueprintAssignable"]}],
 "functions":[{"name":"Compute","flags":["Native","Public","BlueprintCallable","BlueprintPure","Final"],"meta":{"CPP_Default_Scale":"2.000000"},
  "params":[{"name":"Scale","kind":"float","flags":["Parm"]},{"name":"ReturnValue","kind":"double","flags":["Parm","OutParm","ReturnParm"]}]}]}]}
)");
	ASSERT_EQ(Error, "");
	UClass* Thing = FindObject<UClass>(nullptr, TEXT("/Script/CatalogueTestGood.TestThing"));
	ASSERT_NE(Thing, nullptr);
	EXPECT_TRUE(Thing->IsChildOf(FindObject<UClass>(nullptr, TEXT("/Script/Engine.Actor"))));
	EXPECT_TRUE(UE::Catalogue::IsCatalogueType(Thing));
	EXPECT_FALSE(UE::Catalogue::IsMinimalType(Thing));

	const UFunction* Compute = Thing->FindFunctionByName(TEXT("Compute"));
	ASSERT_NE(Compute, nullptr);
	EXPECT_EQ(NamesOf(ParametersOf(Compute)), (std::vector<std::string>{ "Scale", "ReturnValue" }));
	EXPECT_NE(CastField<FDoubleProperty>(Compute->GetReturnProperty()), nullptr);
	EXPECT_EQ(MetaOf(Compute, TEXT("CPP_Default_Scale")), "2.000000");

	const FMapProperty* Names = CastField<FMapProperty>(Thing->FindPropertyByName(TEXT("Names")));
	ASSERT_NE(Names, nullptr);
	EXPECT_NE(CastField<FNameProperty>(Names->KeyProp), nullptr);
	EXPECT_NE(CastField<FArrayProperty>(Names->ValueProp), nullptr);
	// Container elements take the container's inheritable flags, as the header tool gives them.
	EXPECT_TRUE(Names->ValueProp->HasAnyPropertyFlags(CPF_Edit));

	UObject* Object = NewObject<UObject>(GetTransientPackage(), Thing);
	const FEnumProperty* Mode = CastField<FEnumProperty>(Thing->FindPropertyByName(TEXT("Mode")));
	ASSERT_NE(Mode, nullptr);
	EXPECT_EQ(*Mode->ContainerPtrToValuePtr<uint8>(Object), 1);
	UEnum* TestMode = FindObject<UEnum>(nullptr, TEXT("/Script/CatalogueTestGood.ETestMode"));
	ASSERT_NE(TestMode, nullptr);
	EXPECT_EQ(U8(TestMode->GetDisplayNameTextByValue(1).ToString()), "Switched On");
}

// Bad data never crashes: registration stops at the first entry it cannot use and says where and why.
TEST(CatalogueLoading, BadDocumentsAreRefusedWithAClearMessage)
{
	struct FCase
	{
		const TCHAR* Module;
		const char* Json;
		const char* ExpectedError;
	};
	const FCase Cases[] = {
		{ TEXT("CatalogueBad1"), "{\"format\":\"calvorn-catalogue\",", "CatalogueBad1.json: not valid JSON at byte" },
		{ TEXT("CatalogueBad2"), R"({"format":"something-else","version":1,"module":"CatalogueBad2","enums":[],"structs":[],"delegates":[],"classes":[]})",
			"CatalogueBad2.json: format 'something-else' is not a catalogue" },
		{ TEXT("CatalogueBad3"), R"({"format":"calvorn-catalogue","version":7,"module":"CatalogueBad3","enums":[],"structs":[],"delegates":[],"classes":[]})",
			"CatalogueBad3.json: unsupported catalogue version" },
		{ TEXT("CatalogueBad4"), R"({"format":"calvorn-catalogue","version":1,"module":"CatalogueBad4","enums":[],"structs":[],"delegates":[]})",
			"CatalogueBad4.json: 'classes' is missing" },
		{ TEXT("CatalogueBad5"), R"({"format":"calvorn-catalogue","version":1,"module":"CatalogueBad5","enums":[],"structs":[],"delegates":[],
			"classes":[{"name":"Orphan","super":"/Script/Engine.NoSuchClass","flags":["Native"]}]})",
			"CatalogueBad5.json: class Orphan: unknown Class '/Script/Engine.NoSuchClass'" },
		{ TEXT("CatalogueBad6"), R"({"format":"calvorn-catalogue","version":1,"module":"CatalogueBad6","enums":[],"structs":[],"delegates":[],
			"classes":[{"name":"Strange","super":"/Script/CoreUObject.Object","flags":["Native"],
			"properties":[{"name":"Value","kind":"complex","flags":[]}]}]})",
			"CatalogueBad6.json: class Strange: property Value: unknown property kind 'complex'" },
		{ TEXT("CatalogueBad7"), R"({"format":"calvorn-catalogue","version":1,"module":"CatalogueBad7","enums":[],"structs":[],"delegates":[],
			"classes":[{"name":"Flagged","super":"/Script/CoreUObject.Object","flags":["Native"],
			"functions":[{"name":"Run","flags":["Native","Speedy"]}]}]})",
			"CatalogueBad7.json: class Flagged: function Run: unknown function flag 'Speedy'" },
		{ TEXT("CatalogueBad8"), R"({"format":"calvorn-catalogue","version":1,"module":"CatalogueBad8","enums":[],"structs":[],"delegates":[],
			"classes":[{"name":"Typed","super":"/Script/CoreUObject.Object","flags":["Native"],
			"functions":[{"name":"Take","flags":["Native"],"params":[{"name":"Thing","kind":"struct","struct":"/Script/Engine.Actor","flags":["Parm"]}]}]}]})",
			"CatalogueBad8.json: class Typed: function Take: parameter Thing: '/Script/Engine.Actor' is a Class, not a ScriptStruct" },
		{ TEXT("CatalogueBad9"), R"({"format":"calvorn-catalogue","version":1,"module":"CatalogueBad9",
			"enums":[{"name":"ETwice","form":"Regular","underlying":"uint8","values":[{"name":"A","value":0},{"name":"A","value":1}]}],
			"structs":[],"delegates":[],"classes":[]})",
			"CatalogueBad9.json: enum ETwice: has two entries with the same name" },
		{ TEXT("CatalogueBad10"), R"({"format":"calvorn-catalogue","version":1,"module":"CatalogueBad10","enums":[],"structs":[],"delegates":[],
			"classes":[{"name":"Defaulted","super":"/Script/CoreUObject.Object","flags":["Native"],
			"properties":[{"name":"Count","kind":"int","flags":[],"default":"many"}]}]})",
			"CatalogueBad10.json: class Defaulted: property Count: default 'many' does not fit the property" },
		{ TEXT("CatalogueBad11"), R"({"format":"calvorn-catalogue","version":1,"module":"SomeoneElse","enums":[],"structs":[],"delegates":[],"classes":[]})",
			"CatalogueBad11.json: holds module 'SomeoneElse'" },
		{ TEXT("CatalogueBad12"), R"([1,2,3])", "CatalogueBad12.json: 'format' is missing" },
	};
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Module));
		const std::string Error = RegisterDocument(Case.Module, Case.Json);
		EXPECT_EQ(Error.rfind(Case.ExpectedError, 0), 0u) << Error;
	}
	// The embedded catalogue is untouched by failed extra documents.
	EXPECT_NE(FindObject<UClass>(nullptr, TEXT("/Script/Engine.Actor")), nullptr);
}
