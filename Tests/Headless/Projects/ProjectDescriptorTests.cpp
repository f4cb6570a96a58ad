#include "PluginDescriptor.h"
#include "ProjectDescriptor.h"
#include "TempProjectFolder.h"

#include <gtest/gtest.h>

namespace
{
	struct FDescriptorCase
	{
		const TCHAR* Json;
		bool bValid;
		const char* ReasonFragment;
	};
}

TEST(ProjectDescriptor, ReadsTheFieldsAndPluginReferences)
{
	FProjectDescriptor Descriptor;
	FText Reason;
	ASSERT_TRUE(Descriptor.Read(FString(TEXT(R"({
		"FileVersion": 3, "EngineAssociation": "5.7", "Category": "Samples", "Description": "A test",
		"Modules": [{"Name": "TestGame", "Type": "Runtime"}],
		"Plugins": [{"Name": "Foo", "Enabled": true}, {"Name": "Bar", "Enabled": false, "Optional": true}, {"Name": "foo", "Enabled": false}]
	})")), Reason)) << U8(Reason.ToString());
	EXPECT_EQ(Descriptor.FileVersion, 3);
	EXPECT_EQ(U8(Descriptor.EngineAssociation), "5.7");
	EXPECT_EQ(U8(Descriptor.Category), "Samples");
	ASSERT_EQ(Descriptor.Plugins.Num(), 3);
	EXPECT_TRUE(Descriptor.Plugins[1].bOptional);
	// The last entry for a name wins, whatever its case.
	ASSERT_NE(Descriptor.FindPluginReference(TEXT("FOO")), nullptr);
	EXPECT_FALSE(Descriptor.FindPluginReference(TEXT("FOO"))->bEnabled);
	EXPECT_EQ(Descriptor.FindPluginReference(TEXT("Missing")), nullptr);
}

TEST(ProjectDescriptor, RefusesMalformedProjectsWithAReason)
{
	const FDescriptorCase Cases[] = {
		{TEXT(R"({"FileVersion": 3})"), true, ""},
		{TEXT(R"({"ProjectFileVersion": 1})"), true, ""},
		{TEXT(R"({"EngineAssociation": "5.7"})"), false, "\"FileVersion\" field is missing"},
		{TEXT(R"({"FileVersion": 9})"), false, "file version 9 is not supported"},
		{TEXT(R"({"FileVersion": 2.5})"), false, "not a whole number"},
		{TEXT(R"({"FileVersion": "3"})"), true, ""}, // the engine reads numbers from strings too
		{TEXT(R"({"FileVersion": "three"})"), false, "not a whole number"},
		{TEXT(R"({"FileVersion": 3, "Plugins": {}})"), false, "\"Plugins\" field must be an array"},
		{TEXT(R"({"FileVersion": 3, "Plugins": [3]})"), false, "must be an object"},
		{TEXT(R"({"FileVersion": 3, "Plugins": [{"Enabled": true}]})"), false, "has no \"Name\""},
		{TEXT(R"({"FileVersion": 3, "Plugins": [{"Name": "Foo"}]})"), false, "plug-in 'Foo' has no \"Enabled\""},
		{TEXT(R"({"FileVersion": 3, "Plugins": [{"Name": "Foo", "Enabled": "yes"}]})"), false, "\"Enabled\" field must be true or false"},
		{TEXT(R"({"FileVersion": 3, "Category": 4})"), false, "\"Category\" field must be a string"},
		{TEXT(R"({"FileVersion": 3,})"), false, "not a JSON object"},
		{TEXT(R"([1, 2])"), false, "not a JSON object"},
		{TEXT(""), false, "not a JSON object"},
	};
	for (const FDescriptorCase& Case : Cases)
	{
		FProjectDescriptor Descriptor;
		Descriptor.Category = TEXT("Untouched");
		FText Reason;
		EXPECT_EQ(Descriptor.Read(FString(Case.Json), Reason), Case.bValid) << U8(Case.Json);
		if (!Case.bValid)
		{
			EXPECT_NE(U8(Reason.ToString()).find(Case.ReasonFragment), std::string::npos) << U8(Case.Json) << " gave: " << U8(Reason.ToString());
			EXPECT_EQ(U8(Descriptor.Category), "Untouched") << "a failed read must not change the descriptor";
		}
	}
}

TEST(PluginDescriptor, ReadsEnabledByDefaultAndContentFlags)
{
	struct FCase
	{
		const TCHAR* Json;
		EPluginEnabledByDefault EnabledByDefault;
		bool bCanContainContent;
	};
	const FCase Cases[] = {
		{TEXT(R"({"FileVersion": 3})"), EPluginEnabledByDefault::Unspecified, false},
		{TEXT(R"({"FileVersion": 3, "EnabledByDefault": true, "CanContainContent": true})"), EPluginEnabledByDefault::Enabled, true},
		{TEXT(R"({"FileVersion": 3, "EnabledByDefault": false})"), EPluginEnabledByDefault::Disabled, false},
		{TEXT(R"({"PluginFileVersion": 1, "CanContainContent": true})"), EPluginEnabledByDefault::Unspecified, true},
	};
	for (const FCase& Case : Cases)
	{
		FPluginDescriptor Descriptor;
		FText Reason;
		ASSERT_TRUE(Descriptor.Read(FString(Case.Json), &Reason)) << U8(Case.Json) << ": " << U8(Reason.ToString());
		EXPECT_EQ(Descriptor.EnabledByDefault, Case.EnabledByDefault) << U8(Case.Json);
		EXPECT_EQ(Descriptor.bCanContainContent, Case.bCanContainContent) << U8(Case.Json);
	}

	FPluginDescriptor Descriptor;
	FText Reason;
	EXPECT_FALSE(Descriptor.Read(FString(TEXT(R"({"FileVersion": 3, "CanContainContent": 1})")), &Reason));
	EXPECT_NE(U8(Reason.ToString()).find("\"CanContainContent\" field must be true or false"), std::string::npos);
}

TEST(ProjectDescriptor, LoadNamesTheFileInEveryFailure)
{
	FTempProjectFolder Folder;
	Folder.WriteFile(TEXT("Broken.uproject"), TEXT("{\n  \"FileVersion\": 3,\n  oops\n}"));

	FProjectDescriptor Descriptor;
	FText Reason;
	EXPECT_FALSE(Descriptor.Load(Folder.Path(TEXT("Broken.uproject")), Reason));
	const std::string Text = U8(Reason.ToString());
	EXPECT_NE(Text.find(U8(Folder.Path(TEXT("Broken.uproject")))), std::string::npos) << Text;
	EXPECT_NE(Text.find("Line: 3"), std::string::npos) << Text;

	EXPECT_FALSE(Descriptor.Load(Folder.Path(TEXT("Missing.uproject")), Reason));
	EXPECT_EQ(U8(Reason.ToString()), "Failed to open descriptor file '" + U8(Folder.Path(TEXT("Missing.uproject"))) + "'.");

	EXPECT_TRUE(Descriptor.Load(Folder.GetProjectFile(), Reason));
	EXPECT_EQ(U8(Descriptor.EngineAssociation), "5.7");
}
