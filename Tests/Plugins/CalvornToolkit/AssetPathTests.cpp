#include "AssetOperationBase.h"
#include "Dom/JsonObject.h"
#include "Headless/Core/StringTestUtils.h"

#include <gtest/gtest.h>

TEST(AssetPathTest, NormalisesEverySpellingOfAnAssetToItsObjectPath)
{
	const struct
	{
		const TCHAR* Input;
		const char* Expected;
	} Cases[] = {
		{TEXT("/Game/Doors/BP_Door"), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("/Game/Doors/BP_Door.BP_Door"), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("/Game/Doors/BP_Door.bp_door"), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("/Game/Doors/BP_Door.BP_Door_C"), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("/Game/Doors/BP_Door.SKEL_BP_Door_C"), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("/Game/Doors/BP_Door.Default__BP_Door_C"), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("/Game/Doors/BP_Door.BP_Door:EventGraph"), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("/Game/Doors/BP_Door."), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("  /Game/Doors/BP_Door \t"), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("/Game//Doors///BP_Door"), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("/Game/Doors/BP_Door/"), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("\\Game\\Doors\\BP_Door"), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("\"/Game/Doors/BP_Door\""), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("'/Game/Doors/BP_Door'"), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("Blueprint'/Game/Doors/BP_Door.BP_Door'"), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("/Game/Doors/BP_Door.uasset"), "/Game/Doors/BP_Door.BP_Door"},
		{TEXT("/Game/Maps/Level.umap"), "/Game/Maps/Level.Level"},
		{TEXT("/Game/Maps/Level.PersistentLevel"), "/Game/Maps/Level.PersistentLevel"},
		{TEXT("/Script/Engine.Actor"), "/Script/Engine.Actor"},
		{TEXT("BP_Door"), "BP_Door"},
		{TEXT(" BP_Door "), "BP_Door"},
		{TEXT(""), ""},
		{TEXT("/"), "/"},
	};
	for (const auto& Case : Cases)
	{
		const FString Normalized = FAssetOperationBase::NormalizeAssetPath(Case.Input);
		EXPECT_EQ(U8(Normalized), Case.Expected) << U8(Case.Input);
		// Normalising twice changes nothing.
		EXPECT_EQ(U8(FAssetOperationBase::NormalizeAssetPath(Normalized)), Case.Expected) << U8(Case.Input);
	}
}

TEST(AssetPathTest, NameAndPackageComeFromThePackagePart)
{
	const struct
	{
		const TCHAR* Input;
		const char* Package;
		const char* Name;
	} Cases[] = {
		{TEXT("/Game/Doors/BP_Door"), "/Game/Doors/BP_Door", "BP_Door"},
		{TEXT("/Game/Doors/BP_Door.BP_Door_C"), "/Game/Doors/BP_Door", "BP_Door"},
		{TEXT("/Game//Doors/BP_Door/"), "/Game/Doors/BP_Door", "BP_Door"},
		{TEXT("/Game/Maps/Level.PersistentLevel"), "/Game/Maps/Level", "Level"},
		{TEXT("BP_Door"), "BP_Door", "BP_Door"},
		{TEXT(""), "", ""},
	};
	for (const auto& Case : Cases)
	{
		EXPECT_EQ(U8(FAssetOperationBase::GetPackageNameFromPath(Case.Input)), Case.Package) << U8(Case.Input);
		EXPECT_EQ(U8(FAssetOperationBase::GetAssetNameFromPath(Case.Input)), Case.Name) << U8(Case.Input);
	}
}

TEST(AssetPathTest, SerializesJsonCondensedOrPretty)
{
	TSharedPtr<FJsonObject> Object = MakeShared<FJsonObject>();
	Object->SetStringField(TEXT("path"), TEXT("/Game/BP"));
	Object->SetNumberField(TEXT("count"), 2);
	EXPECT_EQ(U8(FAssetOperationBase::SerializeJson(Object)), R"({"path":"/Game/BP","count":2})");
	EXPECT_EQ(U8(FAssetOperationBase::SerializeJson(Object, true)), "{\n\t\"path\": \"/Game/BP\",\n\t\"count\": 2\n}");
	EXPECT_EQ(U8(FAssetOperationBase::SerializeJson(nullptr)), "{}");
}
