#include "Dom/JsonObject.h"
#include "Headless/Core/StringTestUtils.h"
#include "ModificationReadRegistry.h"
#include "ToolInfo.h"
#include "ToolResult.h"

#include <gtest/gtest.h>

using namespace Calvorn;

namespace
{
	FModificationReadRegistry::FReadCallback Returning(const TCHAR* Text)
	{
		FString Copy(Text);
		return [Copy](TSharedPtr<FJsonObject>, FToolResult&) { return Copy; };
	}

	struct FRegistryCleanup
	{
		TArray<FString> Names;
		~FRegistryCleanup()
		{
			for (const FString& Name : Names)
			{
				FModificationReadRegistry::Get().UnregisterReadTool(Name);
			}
		}
	};
}

TEST(ModificationReadRegistryTest, RegistersLooksUpAndUnregistersWithoutCase)
{
	FModificationReadRegistry& Registry = FModificationReadRegistry::Get();
	FRegistryCleanup Cleanup{{TEXT("reg_a"), TEXT("reg_b")}};

	EXPECT_TRUE(Registry.RegisterReadTool(TEXT("reg_a"), TEXT("Blueprint"), Returning(TEXT("a1"))));
	EXPECT_TRUE(Registry.RegisterReadTool(TEXT("reg_b"), TEXT("Other"), Returning(TEXT("b"))));
	EXPECT_TRUE(Registry.IsReadToolRegistered(TEXT("REG_A")));
	EXPECT_EQ(U8(Registry.GetReadToolCategory(TEXT("reg_b"))), "Other");

	// Registering again replaces the callback and keeps the tool's place.
	EXPECT_TRUE(Registry.RegisterReadTool(TEXT("Reg_A"), TEXT("Blueprint"), Returning(TEXT("a2"))));
	const TArray<FString> Names = Registry.GetReadToolNames();
	const int32 IndexA = Names.IndexOfByKey(FString(TEXT("reg_a")));
	const int32 IndexB = Names.IndexOfByKey(FString(TEXT("reg_b")));
	ASSERT_NE(IndexA, INDEX_NONE);
	EXPECT_LT(IndexA, IndexB);

	FToolResult Result;
	FString Text;
	EXPECT_TRUE(Registry.ExecuteRead(TEXT("reg_a"), MakeShared<FJsonObject>(), Result, Text));
	EXPECT_EQ(U8(Text), "a2");

	EXPECT_TRUE(Registry.UnregisterReadTool(TEXT("REG_A")));
	EXPECT_FALSE(Registry.UnregisterReadTool(TEXT("reg_a")));
	EXPECT_FALSE(Registry.IsReadToolRegistered(TEXT("reg_a")));
	Text = TEXT("untouched");
	EXPECT_FALSE(Registry.ExecuteRead(TEXT("reg_a"), MakeShared<FJsonObject>(), Result, Text));
	EXPECT_EQ(U8(Text), "untouched");
	EXPECT_FALSE(static_cast<bool>(Registry.FindReadTool(TEXT("reg_a"))));
	EXPECT_EQ(U8(Registry.GetReadToolCategory(TEXT("reg_a"))), "");
}

TEST(ModificationReadRegistryTest, RefusesAnEmptyNameOrAnUnsetCallback)
{
	FModificationReadRegistry& Registry = FModificationReadRegistry::Get();
	const int32 Before = Registry.GetReadToolNames().Num();
	EXPECT_FALSE(Registry.RegisterReadTool(TEXT(""), TEXT("Blueprint"), Returning(TEXT("x"))));
	EXPECT_FALSE(Registry.RegisterReadTool(TEXT("reg_unset"), TEXT("Blueprint"), FModificationReadRegistry::FReadCallback()));
	EXPECT_EQ(Registry.GetReadToolNames().Num(), Before);
}

TEST(ModificationReadRegistryTest, ACallbackMayUseTheRegistryItself)
{
	FModificationReadRegistry& Registry = FModificationReadRegistry::Get();
	FRegistryCleanup Cleanup{{TEXT("reg_outer"), TEXT("reg_inner")}};
	Registry.RegisterReadTool(TEXT("reg_inner"), TEXT("Blueprint"), Returning(TEXT("inner")));
	Registry.RegisterReadTool(TEXT("reg_outer"), TEXT("Blueprint"), [](TSharedPtr<FJsonObject> Parameters, FToolResult& Result)
	{
		FString Inner;
		FModificationReadRegistry::Get().ExecuteRead(TEXT("reg_inner"), Parameters, Result, Inner);
		// Unregistering itself while running must not pull the callback out from under it.
		FModificationReadRegistry::Get().UnregisterReadTool(TEXT("reg_outer"));
		return TEXT("outer+") + Inner;
	});

	FToolResult Result;
	FString Text;
	ASSERT_TRUE(Registry.ExecuteRead(TEXT("reg_outer"), MakeShared<FJsonObject>(), Result, Text));
	EXPECT_EQ(U8(Text), "outer+inner");
	EXPECT_FALSE(Registry.IsReadToolRegistered(TEXT("reg_outer")));
}

TEST(ModificationReadRegistryTest, ReadCallbackSeesTheParametersItWasGiven)
{
	FModificationReadRegistry& Registry = FModificationReadRegistry::Get();
	FRegistryCleanup Cleanup{{TEXT("reg_fields")}};
	Registry.RegisterReadTool(TEXT("reg_fields"), ToolInfo::CategoryName_Blueprint, [](TSharedPtr<FJsonObject> Parameters, FToolResult&)
	{
		// The Blueprint module's callbacks overwrite the read tool field with their own name.
		Parameters->SetStringField(ToolInfo::FieldName_ReadTool, TEXT("reg_fields"));
		return Parameters->GetStringField(ToolInfo::FieldName_Path) + TEXT("|") + Parameters->GetStringField(ToolInfo::FieldName_ReadTool);
	});
	TSharedPtr<FJsonObject> Parameters = MakeShared<FJsonObject>();
	Parameters->SetStringField(ToolInfo::FieldName_Path, TEXT("/Game/BP"));
	Parameters->SetStringField(ToolInfo::FieldName_ReadTool, TEXT("something_else"));
	FToolResult Result;
	FString Text;
	ASSERT_TRUE(Registry.ExecuteRead(TEXT("reg_fields"), Parameters, Result, Text));
	EXPECT_EQ(U8(Text), "/Game/BP|reg_fields");
}
