#include "AssetOperationBase.h"
#include "AssetRegistry/IAssetRegistry.h"
#include "Dom/JsonObject.h"
#include "Headless/Core/StringTestUtils.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "Misc/PackageName.h"
#include "Templates/Casts.h"
#include "ToolResult.h"
#include "UObject/Class.h"
#include "UObject/Object.h"
#include "UObject/ObjectPtr.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UnrealType.h"

#include <gtest/gtest.h>

#include <filesystem>

// A small asset type: a note that may point at another asset, which makes its package a referencer.
class UToolkitTestNote : public UObject
{
	DECLARE_CLASS(UToolkitTestNote, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/CalvornToolkitTests"), NO_API)
public:
	FString Text;
	TObjectPtr<UObject> Related;
};
IMPLEMENT_CLASS(UToolkitTestNote,
	UE_NATIVE_PROPERTY(FStrProperty, Text, CPF_Edit);
	UE_NATIVE_PROPERTY(FObjectProperty, Related, CPF_Edit, UObject::StaticClass());
)

class UToolkitTestAbstractNote : public UObject
{
	DECLARE_CLASS(UToolkitTestAbstractNote, UObject, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/CalvornToolkitTests"), NO_API)
};
IMPLEMENT_CLASS(UToolkitTestAbstractNote)

namespace
{
	using Calvorn::FToolResult;

	class AssetOperationTest : public ::testing::Test
	{
	protected:
		AssetOperationTest()
		{
			Project.Open();
			UE::Headless::ResetAssetRegistry();
		}

		~AssetOperationTest() override
		{
			UE::Headless::CloseProject();
			UE::Headless::ResetAssetRegistry();
		}

		/** Creates and saves a note asset, failing the test when either step fails. */
		UToolkitTestNote* MakeSavedNote(const TCHAR* Folder, const TCHAR* Name, UObject* Related = nullptr)
		{
			FToolResult Result;
			UToolkitTestNote* Note = Cast<UToolkitTestNote>(FAssetOperationBase::CreateAsset(Name, Folder, UToolkitTestNote::StaticClass(), Result));
			EXPECT_NE(Note, nullptr) << (Result.GetErrorMessages().Num() ? U8(Result.GetErrorMessages()[0]) : std::string());
			if (!Note)
			{
				return nullptr;
			}
			Note->Text = Name;
			Note->Related = Related;
			EXPECT_TRUE(FAssetOperationBase::SaveAsset(Note, Result)) << (Result.GetErrorMessages().Num() ? U8(Result.GetErrorMessages()[0]) : std::string());
			return Note;
		}

		static FJsonObject DeleteRequest(const TCHAR* Path)
		{
			FJsonObject Request;
			Request.SetStringField(TEXT("path"), Path);
			return Request;
		}

		static std::string FirstError(const FToolResult& Result)
		{
			return Result.GetErrorMessages().Num() ? U8(Result.GetErrorMessages()[0]) : std::string();
		}

		FTempProjectFolder Project;
	};
}

TEST_F(AssetOperationTest, CreatesSavesAndFindsAnAsset)
{
	UToolkitTestNote* Note = MakeSavedNote(TEXT("/Game/Notes/"), TEXT("Welcome"));
	ASSERT_NE(Note, nullptr);
	EXPECT_EQ(U8(Note->GetPathName()), "/Game/Notes/Welcome.Welcome");
	EXPECT_TRUE(std::filesystem::exists(FTempProjectFolder::ToNative(Project.Path(TEXT("Content/Notes/Welcome.uasset")))));

	EXPECT_TRUE(FAssetOperationBase::AssetExists(TEXT("/Game/Notes/Welcome")));
	EXPECT_TRUE(FAssetOperationBase::AssetExists(TEXT("/Game//Notes/Welcome.Welcome ")));
	EXPECT_FALSE(FAssetOperationBase::AssetExists(TEXT("/Game/Notes/Missing")));
	EXPECT_FALSE(FAssetOperationBase::AssetExists(TEXT("Welcome")));

	EXPECT_EQ(FAssetOperationBase::GetAssetClassFromAssetName(TEXT("ToolkitTestNote")), UToolkitTestNote::StaticClass());
	EXPECT_EQ(FAssetOperationBase::GetAssetClassFromAssetName(TEXT("UToolkitTestNote")), UToolkitTestNote::StaticClass());
	EXPECT_EQ(FAssetOperationBase::GetAssetClassFromAssetName(TEXT("/Script/CalvornToolkitTests.ToolkitTestNote")), UToolkitTestNote::StaticClass());
	EXPECT_EQ(FAssetOperationBase::GetAssetClassFromAssetName(TEXT("NoSuchClassAnywhere")), nullptr);
	EXPECT_EQ(FAssetOperationBase::GetAssetClassFromAssetName(TEXT("")), nullptr);
}

TEST_F(AssetOperationTest, CreateRefusesBadNamesClassesAndExistingAssets)
{
	ASSERT_NE(MakeSavedNote(TEXT("/Game/Notes"), TEXT("Taken")), nullptr);

	const struct
	{
		const TCHAR* Name;
		const TCHAR* Folder;
		UClass* Class;
		const char* ErrorPart;
	} Cases[] = {
		{TEXT(""), TEXT("/Game/Notes"), UToolkitTestNote::StaticClass(), "empty"},
		{TEXT("Bad Name"), TEXT("/Game/Notes"), UToolkitTestNote::StaticClass(), "Bad Name"},
		{TEXT("NoClass"), TEXT("/Game/Notes"), nullptr, "no asset class"},
		{TEXT("Abstract"), TEXT("/Game/Notes"), UToolkitTestAbstractNote::StaticClass(), "abstract"},
		{TEXT("Elsewhere"), TEXT("/NotMounted/Notes"), UToolkitTestNote::StaticClass(), "Elsewhere"},
		{TEXT("Taken"), TEXT("/Game/Notes"), UToolkitTestNote::StaticClass(), "already exists"},
	};
	for (const auto& Case : Cases)
	{
		FToolResult Result;
		EXPECT_EQ(FAssetOperationBase::CreateAsset(Case.Name, Case.Folder, Case.Class, Result), nullptr) << U8(Case.Name);
		ASSERT_EQ(Result.GetErrorMessages().Num(), 1) << U8(Case.Name);
		EXPECT_NE(FirstError(Result).find(Case.ErrorPart), std::string::npos) << FirstError(Result);
	}
	// Nothing was left behind by the refused abstract class.
	EXPECT_EQ(FindObject<UPackage>(nullptr, TEXT("/Game/Notes/Abstract")), nullptr);
}

TEST_F(AssetOperationTest, SaveReportsItsOwnFailure)
{
	FToolResult Result;
	EXPECT_FALSE(FAssetOperationBase::SaveAsset(nullptr, Result));
	EXPECT_EQ(Result.GetErrorMessages().Num(), 1);

	FToolResult ScriptResult;
	EXPECT_FALSE(FAssetOperationBase::SaveAsset(UToolkitTestNote::StaticClass(), ScriptResult));
	EXPECT_NE(FirstError(ScriptResult).find("ToolkitTestNote"), std::string::npos) << FirstError(ScriptResult);
}

TEST_F(AssetOperationTest, CheckOutNeedsAWritableFile)
{
	ASSERT_NE(MakeSavedNote(TEXT("/Game/Notes"), TEXT("Writable")), nullptr);
	ASSERT_NE(MakeSavedNote(TEXT("/Game/Notes"), TEXT("Locked")), nullptr);
	const std::filesystem::path LockedFile = FTempProjectFolder::ToNative(Project.Path(TEXT("Content/Notes/Locked.uasset")));
	std::filesystem::permissions(LockedFile, std::filesystem::perms::owner_write | std::filesystem::perms::group_write | std::filesystem::perms::others_write,
		std::filesystem::perm_options::remove);

	FString Error;
	EXPECT_TRUE(FAssetOperationBase::CheckOutAssetForModify(TEXT("/Game/Notes/Writable"), Error)) << U8(Error);
	EXPECT_TRUE(Error.IsEmpty());

	EXPECT_FALSE(FAssetOperationBase::CheckOutAssetForModify(TEXT("/Game/Notes/Locked.Locked"), Error));
	EXPECT_NE(U8(Error).find("read-only"), std::string::npos) << U8(Error);
	EXPECT_NE(U8(Error).find("Locked.uasset"), std::string::npos) << U8(Error);

	Error.Reset();
	EXPECT_FALSE(FAssetOperationBase::CheckOutAssetForModify(TEXT("/Game/Notes/Missing"), Error));
	EXPECT_NE(U8(Error).find("no file"), std::string::npos) << U8(Error);

	Error.Reset();
	EXPECT_FALSE(FAssetOperationBase::CheckOutAssetForModify(TEXT("not a path"), Error));
	EXPECT_FALSE(Error.IsEmpty());

	// A created asset that was never saved has nothing to check out yet.
	FToolResult Result;
	ASSERT_NE(FAssetOperationBase::CreateAsset(TEXT("Unsaved"), TEXT("/Game/Notes"), UToolkitTestNote::StaticClass(), Result), nullptr);
	EXPECT_FALSE(FAssetOperationBase::CheckOutAssetForModify(TEXT("/Game/Notes/Unsaved"), Error));
}

TEST_F(AssetOperationTest, DeletionIsRefusedWhileReferencedAndDoneOtherwise)
{
	UToolkitTestNote* Target = MakeSavedNote(TEXT("/Game/Notes"), TEXT("Target"));
	ASSERT_NE(Target, nullptr);
	ASSERT_NE(MakeSavedNote(TEXT("/Game/Notes"), TEXT("PointerA"), Target), nullptr);
	ASSERT_NE(MakeSavedNote(TEXT("/Game/Other"), TEXT("PointerB"), Target), nullptr);
	const std::filesystem::path TargetFile = FTempProjectFolder::ToNative(Project.Path(TEXT("Content/Notes/Target.uasset")));

	FToolResult Refused;
	FAssetOperationBase::ExecuteDeleteOperation(DeleteRequest(TEXT("/Game/Notes/Target")), Refused, TEXT("Blueprint"));
	ASSERT_EQ(Refused.GetErrorMessages().Num(), 1);
	EXPECT_NE(FirstError(Refused).find("Cannot delete Blueprint '/Game/Notes/Target.Target'"), std::string::npos) << FirstError(Refused);
	EXPECT_NE(FirstError(Refused).find("/Game/Notes/PointerA"), std::string::npos) << FirstError(Refused);
	EXPECT_NE(FirstError(Refused).find("/Game/Other/PointerB"), std::string::npos) << FirstError(Refused);
	EXPECT_TRUE(std::filesystem::exists(TargetFile));
	EXPECT_TRUE(FAssetOperationBase::AssetExists(TEXT("/Game/Notes/Target")));

	// The referencers go first; then the target can go.
	for (const TCHAR* Pointer : {TEXT("/Game/Notes/PointerA"), TEXT("/Game/Other/PointerB.PointerB")})
	{
		FToolResult Deleted;
		FAssetOperationBase::ExecuteDeleteOperation(DeleteRequest(Pointer), Deleted, TEXT("Blueprint"));
		EXPECT_TRUE(Deleted.WasSuccessful()) << FirstError(Deleted);
	}
	FToolResult Done;
	FAssetOperationBase::ExecuteDeleteOperation(DeleteRequest(TEXT(" /Game/Notes/Target.Target_C ")), Done, TEXT("Blueprint"));
	EXPECT_TRUE(Done.WasSuccessful()) << FirstError(Done);
	ASSERT_EQ(Done.GetSuccessMessages().Num(), 1);
	EXPECT_EQ(U8(Done.GetSuccessMessages()[0]), "Successfully deleted Blueprint: /Game/Notes/Target.Target");
	EXPECT_FALSE(std::filesystem::exists(TargetFile));
	EXPECT_FALSE(FAssetOperationBase::AssetExists(TEXT("/Game/Notes/Target")));
	EXPECT_EQ(FindObject<UObject>(nullptr, TEXT("/Game/Notes/Target.Target")), nullptr);
	TArray<FAssetData> Left;
	IAssetRegistry::GetChecked().GetAssetsByPackageName(TEXT("/Game/Notes/Target"), Left);
	EXPECT_EQ(Left.Num(), 0);

	// Gone is gone.
	FToolResult Again;
	FAssetOperationBase::ExecuteDeleteOperation(DeleteRequest(TEXT("/Game/Notes/Target")), Again, TEXT("Blueprint"));
	EXPECT_EQ(FirstError(Again), "Blueprint not found: /Game/Notes/Target.Target");
}

TEST_F(AssetOperationTest, DeletionChecksItsRequest)
{
	FToolResult NoPath;
	FAssetOperationBase::ExecuteDeleteOperation(FJsonObject(), NoPath, TEXT("Blueprint"));
	EXPECT_EQ(FirstError(NoPath), "Missing required field 'path'");

	FToolResult WrongType;
	FJsonObject Numeric;
	Numeric.SetNumberField(TEXT("path"), 3);
	FAssetOperationBase::ExecuteDeleteOperation(Numeric, WrongType, TEXT("Blueprint"));
	EXPECT_FALSE(WrongType.WasSuccessful());

	FToolResult Invalid;
	FAssetOperationBase::ExecuteDeleteOperation(DeleteRequest(TEXT("/NotMounted/Thing")), Invalid, TEXT("Blueprint"));
	EXPECT_NE(FirstError(Invalid).find("Invalid Blueprint path"), std::string::npos) << FirstError(Invalid);

	// A read-only (checked-in) file is not deleted.
	ASSERT_NE(MakeSavedNote(TEXT("/Game/Notes"), TEXT("Kept")), nullptr);
	const std::filesystem::path KeptFile = FTempProjectFolder::ToNative(Project.Path(TEXT("Content/Notes/Kept.uasset")));
	std::filesystem::permissions(KeptFile, std::filesystem::perms::owner_write, std::filesystem::perm_options::remove);
	FToolResult ReadOnly;
	FAssetOperationBase::ExecuteDeleteOperation(DeleteRequest(TEXT("/Game/Notes/Kept")), ReadOnly, TEXT("Blueprint"));
	EXPECT_NE(FirstError(ReadOnly).find("read-only"), std::string::npos) << FirstError(ReadOnly);
	EXPECT_TRUE(std::filesystem::exists(KeptFile));
}

TEST_F(AssetOperationTest, UnsavedAssetsCanBeDeletedToo)
{
	FToolResult Result;
	ASSERT_NE(FAssetOperationBase::CreateAsset(TEXT("Draft"), TEXT("/Game/Notes"), UToolkitTestNote::StaticClass(), Result), nullptr);
	EXPECT_TRUE(FAssetOperationBase::AssetExists(TEXT("/Game/Notes/Draft")));
	FAssetOperationBase::ExecuteDeleteOperation(DeleteRequest(TEXT("/Game/Notes/Draft")), Result, TEXT("Note"));
	EXPECT_TRUE(Result.WasSuccessful()) << FirstError(Result);
	EXPECT_FALSE(FAssetOperationBase::AssetExists(TEXT("/Game/Notes/Draft")));
}

namespace
{
	std::string RunShell(const std::string& Command)
	{
		std::string Output;
		if (FILE* Pipe = ::popen(Command.c_str(), "r"))
		{
			char Buffer[256];
			while (::fgets(Buffer, sizeof(Buffer), Pipe))
			{
				Output += Buffer;
			}
			::pclose(Pipe);
		}
		return Output;
	}
}

TEST_F(AssetOperationTest, SourceControlStagesOnlyInsideAGitWorkTree)
{
	ASSERT_NE(MakeSavedNote(TEXT("/Game/Notes"), TEXT("Staged")), nullptr);
	FString Error;
	// Outside any work tree there is nothing to do.
	EXPECT_TRUE(FAssetOperationBase::AddAssetToSourceControl(TEXT("/Game/Notes/Staged"), Error)) << U8(Error);
	EXPECT_TRUE(Error.IsEmpty());

	const std::string Root = U8(Project.GetRoot());
	ASSERT_EQ(std::system(("git init -q '" + Root + "'").c_str()), 0);
	EXPECT_TRUE(FAssetOperationBase::AddAssetToSourceControl(TEXT("/Game/Notes/Staged.Staged"), Error)) << U8(Error);
	EXPECT_EQ(RunShell("git -C '" + Root + "' diff --cached --name-only"), "Content/Notes/Staged.uasset\n");

	EXPECT_FALSE(FAssetOperationBase::AddAssetToSourceControl(TEXT("/Game/Notes/NeverSaved"), Error));
	EXPECT_NE(U8(Error).find("no file"), std::string::npos) << U8(Error);

	// git's own refusal comes back as the reason.
	Project.WriteFile(TEXT(".gitignore"), TEXT("Ignored.uasset\n"));
	ASSERT_NE(MakeSavedNote(TEXT("/Game/Notes"), TEXT("Ignored")), nullptr);
	Error.Reset();
	EXPECT_FALSE(FAssetOperationBase::AddAssetToSourceControl(TEXT("/Game/Notes/Ignored"), Error));
	EXPECT_NE(U8(Error).find("git add"), std::string::npos) << U8(Error);
	EXPECT_NE(U8(Error).find("ignored"), std::string::npos) << U8(Error);
}
