#include "PackageTestUtils.h"
#include "Dom/JsonObject.h"
#include "Serialization/PackageFileHeader.h"
#include "Serialization/PackageSerializer.h"
#include "UObject/AssetRegistryTagsContext.h"
#include "UObject/Class.h"
#include "UObject/Object.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"
#include "UObject/UnrealType.h"

#include <gtest/gtest.h>

#include <filesystem>

// ---- Test classes ---------------------------------------------------------------------------------

/** An asset with one property of each common kind. */
class UPackageTestAsset : public UObject
{
	DECLARE_CLASS(UPackageTestAsset, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/PackageTests"), NO_API)

public:
	int32 Count = 7;
	double Ratio = 0.5;
	bool bEnabled = false;
	FString Label;
	FName Tag;
	FVector Location = FVector::ZeroVector;
	TArray<FString> Names;
	int32 Slots[3] = {0, 0, 0};
	TObjectPtr<UObject> Other;
	FSoftObjectPtr Soft;
	int32 Scratch = 0;

	virtual void GetAssetRegistryTags(FAssetRegistryTagsContext Context) const override
	{
		Super::GetAssetRegistryTags(Context);
		Context.AddTag(FAssetRegistryTag(TEXT("Count"), FString::FromInt(Count), FAssetRegistryTag::TT_Numerical));
		Context.AddTag(FAssetRegistryTag(TEXT("Label"), Label, FAssetRegistryTag::TT_Alphabetical));
	}
};

IMPLEMENT_CLASS(UPackageTestAsset,
	UE_NATIVE_PROPERTY(FIntProperty, Count, CPF_Edit);
	UE_NATIVE_PROPERTY(FDoubleProperty, Ratio, CPF_Edit);
	UE_NATIVE_PROPERTY(FBoolProperty, bEnabled, CPF_Edit, 0xFF, sizeof(bool), true);
	UE_NATIVE_PROPERTY(FStrProperty, Label, CPF_Edit);
	UE_NATIVE_PROPERTY(FNameProperty, Tag, CPF_Edit);
	UE_NATIVE_PROPERTY(FStructProperty, Location, CPF_Edit, TBaseStructure<FVector>::Get());
	FArrayProperty* NamesProperty = UE_NATIVE_PROPERTY(FArrayProperty, Names, CPF_Edit);
	NamesProperty->AddCppProperty(new FStrProperty(NamesProperty, TEXT("Names"), RF_Public | RF_MarkAsNative | RF_Transient));
	UE_NATIVE_PROPERTY(FIntProperty, Slots, CPF_Edit)->SetArrayDim(3);
	UE_NATIVE_PROPERTY(FObjectProperty, Other, CPF_Edit, UObject::StaticClass());
	UE_NATIVE_PROPERTY(FSoftObjectProperty, Soft, CPF_Edit, UObject::StaticClass());
	UE_NATIVE_PROPERTY(FIntProperty, Scratch, CPF_Transient);
)

/** A part inside an asset, pointing back at its owner. */
class UPackageTestPart : public UObject
{
	DECLARE_CLASS(UPackageTestPart, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/PackageTests"), NO_API)

public:
	TObjectPtr<UObject> Owner;
	FString Note;
	/** Not reflected: only a custom serializer can keep it. */
	FString Hidden;
};

IMPLEMENT_CLASS(UPackageTestPart,
	UE_NATIVE_PROPERTY(FObjectProperty, Owner, CPF_None, UObject::StaticClass());
	UE_NATIVE_PROPERTY(FStrProperty, Note, CPF_None);
)

namespace
{
	using namespace UE::Headless;

	/** Keeps the unreflected Hidden member of parts under a field of its own. */
	class FPartSerializer : public FPropertyPackageSerializer
	{
	public:
		virtual void SaveObject(const UObject& Object, FJsonObject& OutEntry, FPackageSaveContext& Context) const override
		{
			FPropertyPackageSerializer::SaveObject(Object, OutEntry, Context);
			OutEntry.SetStringField(TEXT("hidden"), static_cast<const UPackageTestPart&>(Object).Hidden);
		}
		virtual void LoadObject(UObject& Object, const FJsonObject& Entry, FPackageLoadContext& Context) const override
		{
			FPropertyPackageSerializer::LoadObject(Object, Entry, Context);
			if (!Entry.TryGetStringField(TEXT("hidden"), static_cast<UPackageTestPart&>(Object).Hidden))
			{
				Context.AddError(TEXT("it has no \"hidden\" field"));
			}
		}
	};

	std::string ReadText(const FString& Filename)
	{
		FString Text;
		return FFileHelper::LoadFileToString(Text, *Filename) ? U8(Text) : std::string("<missing>");
	}

	/** Forgets every object of the package, as if the program had never loaded it. */
	void Unload(const TCHAR* PackageName)
	{
		if (UPackage* Package = FindObject<UPackage>(nullptr, PackageName))
		{
			TArray<UObject*> Objects;
			GetObjectsWithPackage(Package, Objects, true);
			for (UObject* Object : Objects)
			{
				Object->MarkAsGarbage();
			}
			Package->MarkAsGarbage();
		}
		CollectGarbage(RF_NoFlags);
	}

	FString SaveToItsFile(UPackage* Package, UObject* Asset = nullptr, uint32 SaveFlags = SAVE_None)
	{
		FSavePackageArgs Args;
		Args.TopLevelFlags = RF_Public | RF_Standalone;
		Args.SaveFlags = SaveFlags;
		const FString Filename = FPackageName::LongPackageNameToFilename(Package->GetName(), FPackageName::GetAssetPackageExtension());
		const FSavePackageResultStruct Result = UPackage::Save(Package, Asset, *Filename, Args);
		EXPECT_TRUE(Result.IsSuccessful()) << U8(UE::Headless::GetLastPackageError());
		return Filename;
	}

	UPackageTestAsset* MakeAsset(const TCHAR* PackageName)
	{
		UPackage* Package = CreatePackage(PackageName);
		return NewObject<UPackageTestAsset>(Package, FName(FPackageName::GetShortName(PackageName)), RF_Public | RF_Standalone | RF_Transactional);
	}

	class PackageSaveLoadTest : public ::testing::Test
	{
	protected:
		void TearDown() override
		{
			UE::Headless::SetPackageWriteFaultForTesting(UE::Headless::EPackageWriteFault::None);
			for (const TCHAR* Name : {TEXT("/Game/Crates/Crate"), TEXT("/Game/Shared/Wood"), TEXT("/Game/Broken"), TEXT("/Game/Cycle/A"), TEXT("/Game/Cycle/B"), TEXT("/Game/Plain")})
			{
				Unload(Name);
			}
		}

		FTempContentFolder Game;
	};
}

// ---- Round trips ------------------------------------------------------------------------------------

TEST_F(PackageSaveLoadTest, WritesOnlyWhatDiffersFromTheDefaults)
{
	UPackageTestAsset* Plain = MakeAsset(TEXT("/Game/Plain"));
	Plain->Scratch = 99; // transient: never written
	const FString Filename = SaveToItsFile(Plain->GetPackage());
	EXPECT_EQ(ReadText(Filename),
		"{\"format\":\"calvorn-package\",\"version\":1,\"package\":\"/Game/Plain\",\"assets\":[{\"name\":\"Plain\",\"class\":\"/Script/PackageTests.PackageTestAsset\","
		"\"tags\":{\"Count\":\"7\",\"Label\":\"\"}}],\"dependencies\":[],\n"
		"\t\"objects\": [\n"
		"\t\t{\n"
		"\t\t\t\"name\": \"Plain\",\n"
		"\t\t\t\"class\": \"/Script/PackageTests.PackageTestAsset\",\n"
		"\t\t\t\"outer\": \"\",\n"
		"\t\t\t\"flags\": \"RF_Public|RF_Standalone|RF_Transactional\",\n"
		"\t\t\t\"properties\":\n"
		"\t\t\t{\n"
		"\t\t\t}\n"
		"\t\t}\n"
		"\t]\n"
		"}\n");
}

TEST_F(PackageSaveLoadTest, SavedPackagesLoadBackWithTheirValuesReferencesAndTags)
{
	UPackageTestAsset* Wood = MakeAsset(TEXT("/Game/Shared/Wood"));
	Wood->Label = TEXT("Oak");
	SaveToItsFile(Wood->GetPackage());

	UPackageTestAsset* Crate = MakeAsset(TEXT("/Game/Crates/Crate"));
	Crate->Count = 42;
	Crate->Ratio = 0.25;
	Crate->bEnabled = true;
	Crate->Label = TEXT("Heavy \"crate\", with a comma\nand a line");
	Crate->Tag = TEXT("Cargo");
	Crate->Location = FVector(1.5, -2.0, 300.0);
	Crate->Names = {TEXT("a"), TEXT("b c")};
	Crate->Slots[1] = 5;
	Crate->Other = Wood;
	Crate->Soft = FSoftObjectPtr(FSoftObjectPath(TEXT("/Game/Shared/Wood.Wood")));
	UPackageTestPart* Lid = NewObject<UPackageTestPart>(Crate, TEXT("Lid"), RF_Transactional);
	Lid->Owner = Crate;
	Lid->Note = TEXT("hinged");
	UPackageTestPart* Temporary = NewObject<UPackageTestPart>(Crate, TEXT("Temporary"), RF_Transient);
	Temporary->Note = TEXT("never saved");
	Crate->GetPackage()->SetDirtyFlag(true);

	const FString Filename = SaveToItsFile(Crate->GetPackage(), Crate);
	EXPECT_FALSE(Crate->GetPackage()->IsDirty());
	const std::string First = ReadText(Filename);
	// Saving the same objects again gives the same bytes.
	std::filesystem::remove(FTempContentFolder::Native(Filename));
	Crate->GetPackage()->SetLoadedPath(FString());
	SaveToItsFile(Crate->GetPackage(), Crate);
	EXPECT_EQ(ReadText(Filename), First);

	FPackageFileHeader Header;
	FString Error;
	ASSERT_TRUE(ReadPackageFileHeader(Filename, Header, Error)) << U8(Error);
	ASSERT_EQ(Header.Assets.Num(), 1);
	EXPECT_EQ(Header.Assets[0].ObjectName, FName(TEXT("Crate")));
	EXPECT_EQ(Header.Dependencies, TArray<FName>({TEXT("/Game/Shared/Wood")}));
	EXPECT_EQ(First.find("never saved"), std::string::npos);
	EXPECT_EQ(First.find("Scratch"), std::string::npos);

	Unload(TEXT("/Game/Crates/Crate"));
	Unload(TEXT("/Game/Shared/Wood"));
	ASSERT_EQ(FindObject<UPackage>(nullptr, TEXT("/Game/Crates/Crate")), nullptr);

	UPackage* Loaded = LoadPackage(nullptr, TEXT("/Game/Crates/Crate"), LOAD_None);
	ASSERT_NE(Loaded, nullptr) << U8(UE::Headless::GetLastPackageError());
	EXPECT_EQ(U8(Loaded->GetLoadedPath()), U8(Filename));
	EXPECT_FALSE(Loaded->IsDirty());
	UPackageTestAsset* Read = FindObject<UPackageTestAsset>(Loaded, TEXT("Crate"));
	ASSERT_NE(Read, nullptr);
	EXPECT_EQ(Read->Count, 42);
	EXPECT_EQ(Read->Ratio, 0.25);
	EXPECT_TRUE(Read->bEnabled);
	EXPECT_EQ(U8(Read->Label), "Heavy \"crate\", with a comma\nand a line");
	EXPECT_EQ(Read->Tag, FName(TEXT("Cargo")));
	EXPECT_EQ(Read->Location, FVector(1.5, -2.0, 300.0));
	EXPECT_EQ(Read->Names, TArray<FString>({TEXT("a"), TEXT("b c")}));
	EXPECT_EQ(Read->Slots[0], 0);
	EXPECT_EQ(Read->Slots[1], 5);
	EXPECT_EQ(Read->Scratch, 0);
	EXPECT_TRUE(Read->HasAllFlags(RF_Public | RF_Standalone | RF_Transactional));
	ASSERT_NE(Read->Other.Get(), nullptr) << "the referenced package is loaded first";
	EXPECT_EQ(U8(Read->Other->GetPathName()), "/Game/Shared/Wood.Wood");
	EXPECT_EQ(U8(static_cast<UPackageTestAsset*>(Read->Other.Get())->Label), "Oak");
	EXPECT_EQ(U8(Read->Soft.ToSoftObjectPath().ToString()), "/Game/Shared/Wood.Wood");
	UPackageTestPart* ReadLid = FindObject<UPackageTestPart>(Read, TEXT("Lid"));
	ASSERT_NE(ReadLid, nullptr);
	EXPECT_EQ(ReadLid->Owner.Get(), Read);
	EXPECT_EQ(U8(ReadLid->Note), "hinged");
	EXPECT_EQ(FindObject<UPackageTestPart>(Read, TEXT("Temporary")), nullptr);

	// Loading again returns the package in memory.
	EXPECT_EQ(LoadPackage(nullptr, TEXT("/Game/Crates/Crate"), LOAD_None), Loaded);
	// Loaded as it was saved, it saves to the same bytes.
	SaveToItsFile(Loaded, Read);
	EXPECT_EQ(ReadText(Filename), First);
}

TEST_F(PackageSaveLoadTest, PackagesThatReferenceEachOtherLoad)
{
	UPackageTestAsset* A = MakeAsset(TEXT("/Game/Cycle/A"));
	UPackageTestAsset* B = MakeAsset(TEXT("/Game/Cycle/B"));
	A->Other = B;
	B->Other = A;
	SaveToItsFile(A->GetPackage());
	SaveToItsFile(B->GetPackage());
	Unload(TEXT("/Game/Cycle/A"));
	Unload(TEXT("/Game/Cycle/B"));

	UPackage* LoadedA = LoadPackage(nullptr, TEXT("/Game/Cycle/A"), LOAD_None);
	ASSERT_NE(LoadedA, nullptr) << U8(UE::Headless::GetLastPackageError());
	UPackageTestAsset* ReadA = FindObject<UPackageTestAsset>(LoadedA, TEXT("A"));
	ASSERT_NE(ReadA, nullptr);
	ASSERT_NE(ReadA->Other.Get(), nullptr);
	EXPECT_EQ(static_cast<UPackageTestAsset*>(ReadA->Other.Get())->Other.Get(), ReadA);
}

TEST_F(PackageSaveLoadTest, ARegisteredSerializerHandlesItsClass)
{
	FPackageSerializerRegistry::Get().Register(FTopLevelAssetPath(UPackageTestPart::StaticClass()), MakeShared<FPartSerializer>());
	UPackageTestAsset* Crate = MakeAsset(TEXT("/Game/Crates/Crate"));
	UPackageTestPart* Lid = NewObject<UPackageTestPart>(Crate, TEXT("Lid"));
	Lid->Hidden = TEXT("kept by the custom serializer");
	const FString Filename = SaveToItsFile(Crate->GetPackage());
	EXPECT_NE(ReadText(Filename).find("\"hidden\": \"kept by the custom serializer\""), std::string::npos);
	Unload(TEXT("/Game/Crates/Crate"));

	UPackage* Loaded = LoadPackage(nullptr, TEXT("/Game/Crates/Crate"), LOAD_None);
	FPackageSerializerRegistry::Get().Unregister(FTopLevelAssetPath(UPackageTestPart::StaticClass()));
	ASSERT_NE(Loaded, nullptr) << U8(UE::Headless::GetLastPackageError());
	UPackageTestPart* ReadLid = FindObject<UPackageTestPart>(FindObject<UObject>(Loaded, TEXT("Crate")), TEXT("Lid"));
	ASSERT_NE(ReadLid, nullptr);
	EXPECT_EQ(U8(ReadLid->Hidden), "kept by the custom serializer");
}

// ---- Refused saves ---------------------------------------------------------------------------------

TEST_F(PackageSaveLoadTest, SavesThatCouldLoseDataOrLeaveTheFoldersAreRefused)
{
	UPackageTestAsset* Crate = MakeAsset(TEXT("/Game/Crates/Crate"));
	UPackage* Package = Crate->GetPackage();
	const FString Filename = FPackageName::LongPackageNameToFilename(TEXT("/Game/Crates/Crate"), TEXT(".uasset"));
	const std::string Prefix = "Cannot save package '/Game/Crates/Crate' to '";
	FSavePackageArgs Args;

	struct FCase
	{
		FString Filename;
		std::string Expected;
	};
	const FCase Cases[] = {
		{Game.Content(TEXT("Elsewhere/Crate.uasset")), Prefix + U8(Game.Content(TEXT("Elsewhere/Crate.uasset"))) + "': the package's file is '" + U8(Filename) + "'."},
		{Game.Content(TEXT("Crates/Crate.json")), Prefix + U8(Game.Content(TEXT("Crates/Crate.json"))) + "': a package file must end in .uasset or .umap."},
		{TEXT("/etc/Crate.uasset"), Prefix + "/etc/Crate.uasset': the package's file is '" + U8(Filename) + "'."},
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_FALSE(UPackage::Save(Package, Crate, *Case.Filename, Args).IsSuccessful());
		EXPECT_EQ(U8(UE::Headless::GetLastPackageError()), Case.Expected);
	}

	// A file that this package was not loaded from is not replaced.
	Game.WriteFile(Filename, TEXT("someone else's work"));
	EXPECT_FALSE(UPackage::Save(Package, Crate, *Filename, Args).IsSuccessful());
	EXPECT_EQ(U8(UE::Headless::GetLastPackageError()), Prefix + U8(Filename) + "': the file already exists and the package was not loaded from it. Load the package before saving it, or delete the file first.");
	EXPECT_EQ(ReadText(Filename), "someone else's work");

	// Reflected types and read-only roots are never saved.
	UPackage* Script = FindObject<UPackage>(nullptr, TEXT("/Script/PackageTests"));
	ASSERT_NE(Script, nullptr);
	EXPECT_FALSE(UPackage::Save(Script, nullptr, *Game.Content(TEXT("Script.uasset")), Args).IsSuccessful());
	EXPECT_NE(U8(UE::Headless::GetLastPackageError()).find("it holds reflected types or transient objects, which are never saved."), std::string::npos);
	UPackage* EnginePackage = CreatePackage(TEXT("/Engine/Tests/Thing"));
	NewObject<UPackageTestAsset>(EnginePackage, TEXT("Thing"), RF_Public | RF_Standalone);
	EXPECT_FALSE(UPackage::Save(EnginePackage, nullptr, *Game.Content(TEXT("Thing.uasset")), Args).IsSuccessful());
	EXPECT_NE(U8(UE::Headless::GetLastPackageError()).find("Path does not start with a valid root."), std::string::npos);
	Unload(TEXT("/Engine/Tests/Thing"));
}

TEST_F(PackageSaveLoadTest, AReferenceToAnObjectThatIsNeverSavedIsRefused)
{
	UPackageTestAsset* Crate = MakeAsset(TEXT("/Game/Crates/Crate"));
	UPackageTestAsset* Scratch = NewObject<UPackageTestAsset>(GetTransientPackage(), TEXT("ScratchCrate"));
	Crate->Other = Scratch;
	const FString Filename = FPackageName::LongPackageNameToFilename(TEXT("/Game/Crates/Crate"), TEXT(".uasset"));
	EXPECT_FALSE(UPackage::Save(Crate->GetPackage(), Crate, *Filename, FSavePackageArgs()).IsSuccessful());
	EXPECT_EQ(U8(UE::Headless::GetLastPackageError()), "Cannot save package '/Game/Crates/Crate' to '" + U8(Filename) + "': object 'Crate': it references '"
		+ U8(Scratch->GetPathName()) + "', which lives in a transient package and is never saved.");
	EXPECT_FALSE(std::filesystem::exists(FTempContentFolder::Native(Filename)));
	Scratch->MarkAsGarbage();
}

TEST_F(PackageSaveLoadTest, AFailedWriteKeepsTheOldFileAndThePackageDirty)
{
	UPackageTestAsset* Crate = MakeAsset(TEXT("/Game/Crates/Crate"));
	Crate->Count = 1;
	const FString Filename = SaveToItsFile(Crate->GetPackage());
	const std::string Saved = ReadText(Filename);

	Crate->Count = 2;
	Crate->GetPackage()->SetDirtyFlag(true);
	UE::Headless::SetPackageWriteFaultForTesting(UE::Headless::EPackageWriteFault::WriteTemporaryFile);
	EXPECT_FALSE(UPackage::Save(Crate->GetPackage(), Crate, *Filename, FSavePackageArgs()).IsSuccessful());
	UE::Headless::SetPackageWriteFaultForTesting(UE::Headless::EPackageWriteFault::None);
	EXPECT_EQ(U8(UE::Headless::GetLastPackageError()), "Cannot save '" + U8(Filename) + "': writing the temporary file failed (No space left on device). The file on disk was left as it was.");
	EXPECT_EQ(ReadText(Filename), Saved);
	EXPECT_TRUE(Crate->GetPackage()->IsDirty());

	// The package still owns its file, so the next save goes through.
	SaveToItsFile(Crate->GetPackage());
	EXPECT_NE(ReadText(Filename).find("\"Count\": \"2\""), std::string::npos);
}

// ---- Refused loads -----------------------------------------------------------------------------------

TEST_F(PackageSaveLoadTest, BadFilesFailWithTheFileAndTheReasonAndAreNeverOverwritten)
{
	const FString Filename = Game.Content(TEXT("Broken.uasset"));
	const std::string Prefix = "Cannot load package '/Game/Broken' from '" + U8(Filename) + "': ";
	const FString Header = TEXT("{\"format\":\"calvorn-package\",\"version\":1,\"package\":\"/Game/Broken\",\"assets\":[],\"dependencies\":[],\n");
	auto Objects = [&Header](const TCHAR* Entries) { return Header + TEXT("\t\"objects\": [") + Entries + TEXT("]\n}\n"); };
	const FString Asset = TEXT("{\"name\": \"Broken\", \"class\": \"/Script/PackageTests.PackageTestAsset\", \"outer\": \"\", \"flags\": \"RF_Public\"");

	struct FCase
	{
		FString Text;
		std::string Reason;
	};
	const FCase Cases[] = {
		{TEXT(""), "its first line is not a package header"},
		{TEXT("PK\x03\x04 binary junk\n"), "its first line is not a package header"},
		{TEXT("{\"format\":\"calvorn-package\",\"version\":2,\"package\":\"/Game/Broken\",\n}"), "it was written in format version 2 by a newer program (this one reads up to version 1)."},
		{Header + TEXT("\t\"objects\": [\n"), "the file is not a valid JSON document"},
		{Header + TEXT("\t\"things\": []\n}\n"), "it has no \"objects\" array."},
		{Objects(TEXT("3")), "entry 0 of \"objects\" is not a JSON object."},
		{Objects(TEXT("{\"name\": \"Broken\"}")), "object entry 0 lacks one of the strings \"name\", \"class\", \"outer\" and \"flags\"."},
		{Objects(TEXT("{\"name\": \"Bro.ken\", \"class\": \"/Script/PackageTests.PackageTestAsset\", \"outer\": \"\", \"flags\": \"\"}")), "object entry 0 has the invalid name \"Bro.ken\"."},
		{Objects(TEXT("{\"name\": \"Broken\", \"class\": \"/Script/Nowhere.Nothing\", \"outer\": \"\", \"flags\": \"\"}")), "object 'Broken': its class '/Script/Nowhere.Nothing' does not exist."},
		{Objects(TEXT("{\"name\": \"Lid\", \"class\": \"/Script/PackageTests.PackageTestPart\", \"outer\": \"Missing\", \"flags\": \"\"}")), "object 'Lid': its outer 'Missing' is not an earlier object of the package."},
		{Objects(TEXT("{\"name\": \"Broken\", \"class\": \"/Script/PackageTests.PackageTestAsset\", \"outer\": \"\", \"flags\": \"RF_Public|RF_Bogus\"}")), "object 'Broken': 'RF_Bogus' is not a flag a package keeps."},
		{Objects(*(Asset + TEXT(", \"properties\": {\"Nope\": \"1\"}}"))), "object 'Broken': its class '/Script/PackageTests.PackageTestAsset' has no saved property 'Nope'."},
		{Objects(*(Asset + TEXT(", \"properties\": {\"Count\": \"many\"}}"))), "object 'Broken': property 'Count' cannot be read from \"many\"."},
		{Objects(*(Asset + TEXT(", \"properties\": {\"Count\": 3}}"))), "object 'Broken': the value of property 'Count' is not a string of export text."},
		{Objects(*(Asset + TEXT(", \"properties\": {\"Slots(5)\": \"1\"}}"))), "object 'Broken': 'Slots(5)' does not name an element of property 'Slots' (3 element(s))."},
		{Objects(*(Asset + TEXT(", \"properties\": {\"Scratch\": \"1\"}}"))), "object 'Broken': its class '/Script/PackageTests.PackageTestAsset' has no saved property 'Scratch'."},
		{Objects(*(Asset + TEXT("}, ") + Asset + TEXT("}"))), "object 'Broken' appears twice."},
		{Header.Replace(TEXT("\"dependencies\":[]"), TEXT("\"dependencies\":[\"/Game/Gone\"]")) + TEXT("\t\"objects\": []\n}\n"),
			"the package it references, '/Game/Gone', cannot be loaded (Cannot load package '/Game/Gone': its file '" + U8(Game.Content(TEXT("Gone.uasset"))) + "' does not exist.)."},
	};
	for (const FCase& Case : Cases)
	{
		Game.WriteFile(Filename, Case.Text);
		EXPECT_EQ(LoadPackage(nullptr, TEXT("/Game/Broken"), LOAD_None), nullptr) << U8(Case.Text);
		const std::string Error = U8(UE::Headless::GetLastPackageError());
		EXPECT_EQ(Error.substr(0, Prefix.size()), Prefix) << Error;
		EXPECT_NE(Error.find(Case.Reason), std::string::npos) << U8(Case.Text) << "\ngave: " << Error;
		EXPECT_EQ(FindObject<UObject>(nullptr, TEXT("/Game/Broken.Broken")), nullptr) << "objects of a failed load are discarded";

		// The package that failed to load never replaces its file.
		UPackage* Failed = FindObject<UPackage>(nullptr, TEXT("/Game/Broken"));
		ASSERT_NE(Failed, nullptr);
		EXPECT_TRUE(Failed->HasLoadError());
		NewObject<UPackageTestAsset>(Failed, TEXT("Replacement"), RF_Public | RF_Standalone);
		EXPECT_FALSE(UPackage::Save(Failed, nullptr, *Filename, FSavePackageArgs()).IsSuccessful());
		EXPECT_NE(U8(UE::Headless::GetLastPackageError()).find("so saving could overwrite data that was never read"), std::string::npos);
		EXPECT_EQ(ReadText(Filename), U8(Case.Text));
		Unload(TEXT("/Game/Broken"));
	}
}

TEST_F(PackageSaveLoadTest, NamesThatAreNotPackagesOnDiskAreRefused)
{
	struct FCase
	{
		const TCHAR* Name;
		std::string Expected;
	};
	const FCase Cases[] = {
		{TEXT(""), "Cannot load a package: no package name was given."},
		{TEXT("/Game/Missing"), "Cannot load package '/Game/Missing': its file '" + U8(Game.Content(TEXT("Missing.uasset"))) + "' does not exist."},
		{TEXT("/Game/../Escape"), "Cannot load package '/Game/../Escape': Input '/Game/../Escape' contains one of the invalid characters for LongPackageNames"},
		{TEXT("/Script/Nowhere"), "Cannot load package '/Script/Nowhere': Input '/Script/Nowhere' is in a memory-only mount point."},
		{TEXT("/etc/passwd"), "Cannot load '/etc/passwd': FilenameToLongPackageName failed to convert '/etc/passwd': the file is not inside a mounted content folder"},
	};
	for (const FCase& Case : Cases)
	{
		EXPECT_EQ(LoadPackage(nullptr, Case.Name, LOAD_None), nullptr);
		EXPECT_EQ(U8(UE::Headless::GetLastPackageError()).substr(0, Case.Expected.size()), Case.Expected);
	}
}

TEST_F(PackageSaveLoadTest, SavingThroughALinkThatLeavesTheFolderIsRefused)
{
	FTempContentFolder Outside(TEXT("/Outside/"));
	std::filesystem::create_directory_symlink(FTempContentFolder::Native(Outside.GetContentDir()), FTempContentFolder::Native(Game.Content(TEXT("Escape"))));
	UPackageTestAsset* Thing = MakeAsset(TEXT("/Game/Escape/Thing"));
	const FString Filename = Game.Content(TEXT("Escape/Thing.uasset"));
	EXPECT_FALSE(UPackage::Save(Thing->GetPackage(), Thing, *Filename, FSavePackageArgs()).IsSuccessful());
	EXPECT_NE(U8(UE::Headless::GetLastPackageError()).find("Input '/Game/Escape/Thing' leads through the symbolic link '" + U8(Game.Content(TEXT("Escape"))) + "'"), std::string::npos)
		<< U8(UE::Headless::GetLastPackageError());
	EXPECT_TRUE(std::filesystem::is_empty(FTempContentFolder::Native(Outside.GetContentDir())));
	EXPECT_EQ(LoadPackage(nullptr, TEXT("/Game/Escape/Thing"), LOAD_None), Thing->GetPackage()) << "the package in memory is the one known";
	Unload(TEXT("/Game/Escape/Thing"));
}

TEST_F(PackageSaveLoadTest, LoadsByFileNameAndKeepsTheDirtyStateAsAsked)
{
	UPackageTestAsset* Crate = MakeAsset(TEXT("/Game/Crates/Crate"));
	Crate->GetPackage()->SetDirtyFlag(true);
	const FString Filename = SaveToItsFile(Crate->GetPackage(), Crate, SAVE_KeepDirty);
	EXPECT_TRUE(Crate->GetPackage()->IsDirty());
	EXPECT_FALSE(Crate->GetPackage()->HasAnyPackageFlags(PKG_NewlyCreated));
	Unload(TEXT("/Game/Crates/Crate"));

	UPackage* Loaded = LoadPackage(nullptr, *Filename, LOAD_None);
	ASSERT_NE(Loaded, nullptr) << U8(UE::Headless::GetLastPackageError());
	EXPECT_EQ(U8(Loaded->GetName()), "/Game/Crates/Crate");
	EXPECT_EQ(U8(FPackageName::GetShortName(Loaded)), "Crate");
	EXPECT_TRUE(Loaded->IsFullyLoaded());
	EXPECT_FALSE(Loaded->IsDirty());
	EXPECT_EQ(U8(UE::Headless::GetLastPackageError()), "");
}
