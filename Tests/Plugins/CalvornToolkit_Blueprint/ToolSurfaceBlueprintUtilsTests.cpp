#include "ToolSurfaceTestSupport.h"

#include "BlueprintUtils.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "K2Node_FunctionEntry.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"
#include "Templates/Casts.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UObjectHash.h"

#include <filesystem>

using namespace ToolSurfaceTests;
using Calvorn::FToolResult;

namespace
{
	class ToolSurfaceBlueprintUtils : public FToolSession
	{
	protected:
		UBlueprint* Create(const TCHAR* Path, const TCHAR* Parent = TEXT("/Script/Engine.Actor"))
		{
			const FToolResult Result = Call(TEXT("bp_create_asset"),
				FString::Printf(TEXT("{\"path\": \"%s\", \"blueprint_parent_class\": {\"type\": \"native\", \"parent_path\": \"%s\"}}"), Path, Parent));
			EXPECT_FALSE(Result.HasFailed()) << Describe(Result);
			FToolResult Lookup;
			return FBlueprintUtils::LoadBlueprint(Path, Lookup);
		}
	};
}

TEST_F(ToolSurfaceBlueprintUtils, AnUnknownBlueprintIsOneErrorAfterEveryLookup)
{
	for (const TCHAR* Path : {TEXT("/Game/Nowhere/BP_Missing"), TEXT("BP_Missing"), TEXT(""), TEXT("not a path at all")})
	{
		SCOPED_TRACE(U8(Path));
		FToolResult Result;
		EXPECT_EQ(FBlueprintUtils::LoadBlueprint(Path, Result), nullptr);
		EXPECT_EQ(Result.GetErrorMessages(), TArray<FString>{FString::Printf(TEXT("Failed to find or load blueprint: %s"), Path)});
		EXPECT_EQ(Result.GetWarningMessages().Num(), 0);
		EXPECT_FALSE(FBlueprintUtils::BlueprintExists(Path));
	}
}

TEST_F(ToolSurfaceBlueprintUtils, NamesPackagesAndDescriptions)
{
	UBlueprint* Blueprint = Create(TEXT("/Game/Utils/BP_Lamp"));
	ASSERT_NE(Blueprint, nullptr);
	EXPECT_TRUE(FBlueprintUtils::BlueprintExists(TEXT("/Game/Utils/BP_Lamp.BP_Lamp")));
	EXPECT_EQ(FBlueprintUtils::GetBlueprintName(TEXT("/Game/Utils/BP_Lamp.BP_Lamp_C")), TEXT("BP_Lamp"));
	ASSERT_NE(FBlueprintUtils::GetBlueprintPackage(Blueprint), nullptr);
	EXPECT_EQ(FBlueprintUtils::GetBlueprintPackage(Blueprint)->GetName(), TEXT("/Game/Utils/BP_Lamp"));
	EXPECT_EQ(FBlueprintUtils::GetBlueprintPackage(nullptr), nullptr);
	EXPECT_EQ(FBlueprintUtils::GetBlueprintDescription(Blueprint), TEXT("Blueprint: BP_Lamp\nPath: /Game/Utils/BP_Lamp.BP_Lamp\nParent Class: Actor\nBlueprint Type: Normal"));
	EXPECT_TRUE(FBlueprintUtils::SaveBlueprint(Blueprint));
	EXPECT_FALSE(FBlueprintUtils::SaveBlueprint(nullptr));
}

TEST_F(ToolSurfaceBlueprintUtils, TheSafeLoadRefusesBadPathsOneReasonAtATime)
{
	ASSERT_NE(Create(TEXT("/Game/Utils/BP_Safe")), nullptr);
	const struct
	{
		const TCHAR* Path;
		const TCHAR* Warning;
	} Cases[] = {
		{TEXT(""), TEXT("Empty object path provided")},
		{TEXT("no slashes here"), TEXT("Invalid asset path format: no slashes here")},
		{TEXT("/Game/Utils/Nothing"), TEXT("Asset not found in registry: /Game/Utils/Nothing")},
		{TEXT("/Game/Utils/Nothing.Nothing"), TEXT("Asset not found in registry: /Game/Utils/Nothing.Nothing")},
		{TEXT("/Game/Utils/BP_Safe.NotInThePackage"), TEXT("Failed to load or find object: /Game/Utils/BP_Safe.NotInThePackage")},
	};
	for (const auto& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Path));
		FToolResult Result;
		EXPECT_EQ(FBlueprintUtils::LoadObjectSafely(Case.Path, Result), nullptr);
		EXPECT_EQ(Result.GetWarningMessages(), TArray<FString>{Case.Warning});
		EXPECT_EQ(Result.GetErrorMessages().Num(), 0);
	}
	FToolResult Result;
	UObject* Found = FBlueprintUtils::LoadObjectSafely(TEXT("/Game/Utils/BP_Safe.BP_Safe"), Result);
	ASSERT_NE(Found, nullptr) << Describe(Result);
	EXPECT_TRUE(Found->IsA<UBlueprint>());
}

TEST_F(ToolSurfaceBlueprintUtils, ANewVariableNameMustBeFreeEverywhere)
{
	UBlueprint* Blueprint = Create(TEXT("/Game/Utils/BP_Names"));
	ASSERT_NE(Blueprint, nullptr);
	FEdGraphPinType IntType;
	IntType.PinCategory = UEdGraphSchema_K2::PC_Int;
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Health"), IntType));
	ASSERT_FALSE(Call(TEXT("bp_create_graph"), TEXT(R"({"path": "/Game/Utils/BP_Names", "functions": [{"name": "Heal"}]})")).HasFailed());
	ASSERT_FALSE(Call(TEXT("compile_blueprint"), TEXT(R"({"blueprint_paths": ["/Game/Utils/BP_Names"]})")).HasFailed());

	const struct
	{
		const TCHAR* Name;
		const TCHAR* Warning;
	} Refused[] = {
		{TEXT(""), TEXT("Variable name cannot be empty")},
		{TEXT("Health"), TEXT("A variable with name 'Health' already exists")},
		{TEXT("health"), TEXT("A variable with name 'health' already exists")},
		{TEXT("Heal"), TEXT("A function with name 'Heal' already exists")},
		{TEXT("bHidden"), TEXT("A property with name 'bHidden' already exists in the parent class")},
	};
	for (const auto& Case : Refused)
	{
		SCOPED_TRACE(U8(Case.Name));
		FToolResult Result;
		EXPECT_FALSE(FBlueprintUtils::VerifyBlueprintVariableName(Blueprint, Case.Name, Result));
		EXPECT_EQ(Result.GetWarningMessages(), TArray<FString>{Case.Warning});
	}
	// The editor's own rules come last: a graph's name is taken, a name far too long is refused.
	for (const FString& Name : {FString(TEXT("EventGraph")), FString::ChrN(200, TCHAR('A'))})
	{
		FToolResult Result;
		EXPECT_FALSE(FBlueprintUtils::VerifyBlueprintVariableName(Blueprint, Name, Result)) << U8(Name);
		EXPECT_EQ(Result.GetWarningMessages().Num(), 1) << U8(Name);
	}
	FToolResult Free;
	EXPECT_TRUE(FBlueprintUtils::VerifyBlueprintVariableName(Blueprint, TEXT("Stamina"), Free)) << Describe(Free);
	EXPECT_EQ(Free.GetWarningMessages().Num(), 0);
	FToolResult NoBlueprint;
	EXPECT_FALSE(FBlueprintUtils::VerifyBlueprintVariableName(nullptr, TEXT("Stamina"), NoBlueprint));
	EXPECT_EQ(NoBlueprint.GetWarningMessages(), TArray<FString>{TEXT("Invalid Blueprint provided")});
}

TEST_F(ToolSurfaceBlueprintUtils, AReadOnlyAssetIsNotChanged)
{
	ASSERT_NE(Create(TEXT("/Game/Utils/BP_Locked")), nullptr);
	const std::filesystem::path File = FTempProjectFolder::ToNative(ContentFile(TEXT("Utils/BP_Locked.uasset")));
	std::filesystem::permissions(File, std::filesystem::perms::owner_write | std::filesystem::perms::group_write | std::filesystem::perms::others_write,
		std::filesystem::perm_options::remove);
	const FToolResult Result = Call(TEXT("bp_create_graph"), TEXT(R"({"path": "/Game/Utils/BP_Locked", "functions": [{"name": "Unlock"}]})"));
	ASSERT_EQ(Result.GetErrorMessages().Num(), 1) << Describe(Result);
	EXPECT_TRUE(Result.GetErrorMessages()[0].StartsWith(TEXT("Failed to check out blueprint for modification: /Game/Utils/BP_Locked.BP_Locked\n"))) << Describe(Result);
	FToolResult Lookup;
	UBlueprint* Blueprint = FBlueprintUtils::LoadBlueprint(TEXT("/Game/Utils/BP_Locked"), Lookup);
	ASSERT_NE(Blueprint, nullptr);
	TArray<UEdGraph*> Graphs;
	Blueprint->GetAllGraphs(Graphs);
	for (const UEdGraph* Graph : Graphs)
	{
		EXPECT_NE(Graph->GetName(), TEXT("Unlock"));
	}
}

TEST_F(ToolSurfaceBlueprintUtils, AParentFunctionWithAReturnValueIsOverriddenAsAFunction)
{
	UBlueprint* Blueprint = Create(TEXT("/Game/Utils/BP_Hero"), TEXT("/Script/Engine.Character"));
	ASSERT_NE(Blueprint, nullptr);
	const FToolResult Result = Call(TEXT("bp_create_graph"), TEXT(R"({"path": "/Game/Utils/BP_Hero", "functions": [
		{"name": "CanJumpInternal", "parameters": [{"name": "Extra", "type": {"category": "int"}}]}]})"));
	EXPECT_FALSE(Result.HasFailed()) << Describe(Result);
	EXPECT_TRUE(Result.GetSuccessMessages().Contains(TEXT("Overriding function: CanJumpInternal in parent class: Character"))) << Describe(Result);
	EXPECT_TRUE(AnyContains(Result.GetWarningMessages(), TEXT("overrides a parent function, whose signature it keeps"))) << Describe(Result);
	UEdGraph* Graph = nullptr;
	for (UEdGraph* Candidate : Blueprint->FunctionGraphs)
	{
		Graph = Candidate && Candidate->GetName() == TEXT("CanJumpInternal") ? Candidate : Graph;
	}
	ASSERT_NE(Graph, nullptr);
	const UK2Node_FunctionEntry* Entry = nullptr;
	for (UEdGraphNode* Node : Graph->Nodes)
	{
		Entry = Entry ? Entry : Cast<UK2Node_FunctionEntry>(Node);
	}
	ASSERT_NE(Entry, nullptr);
	EXPECT_EQ(Entry->UserDefinedPins.Num(), 0);
	EXPECT_EQ(Entry->FunctionReference.GetMemberName(), TEXT("CanJumpInternal"));
}

TEST_F(ToolSurfaceBlueprintUtils, ADamagedFileIsReportedAsSuch)
{
	UBlueprint* Blueprint = Create(TEXT("/Game/Utils/BP_Damaged"));
	ASSERT_NE(Blueprint, nullptr);
	// Out of memory, as after a restart, with the body of its file spoilt (the registry reads only the first line).
	UPackage* Package = Blueprint->GetOutermost();
	TArray<UObject*> Objects;
	GetObjectsWithOuter(Package, Objects, true);
	Objects.Add(Package);
	for (UObject* Object : Objects)
	{
		Object->ClearFlags(RF_Standalone | RF_Public);
		Object->MarkAsGarbage();
	}
	const FString File = ContentFile(TEXT("Utils/BP_Damaged.uasset"));
	FString Text;
	ASSERT_TRUE(FFileHelper::LoadFileToString(Text, *File));
	int32 LineEnd = INDEX_NONE;
	ASSERT_TRUE(Text.FindChar(TCHAR('\n'), LineEnd));
	ASSERT_TRUE(FFileHelper::SaveStringToFile(Text.Left(LineEnd + 1) + TEXT("{ this is not the rest of a package"), *File));

	FToolResult Result;
	EXPECT_EQ(FBlueprintUtils::LoadBlueprint(TEXT("/Game/Utils/BP_Damaged"), Result), nullptr);
	EXPECT_EQ(Result.GetErrorMessages(), TArray<FString>{TEXT("Failed to find or load blueprint: /Game/Utils/BP_Damaged")});
	EXPECT_EQ(Result.GetWarningMessages(), TArray<FString>{TEXT("[Warning] The asset registry lists /Game/Utils/BP_Damaged.BP_Damaged, but its file could not be loaded; it may be damaged or written by another version")});
}
