#include "Headless/Core/StringTestUtils.h"
#include "Misc/ConfigCacheIni.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <unistd.h>

namespace
{
	std::vector<std::string> Values(const FConfigFile& File, const TCHAR* Section, const TCHAR* Key)
	{
		TArray<FString> Found;
		File.GetValues(Section, Key, Found);
		std::vector<std::string> Result;
		for (const FString& Value : Found)
		{
			Result.push_back(U8(Value));
		}
		return Result;
	}

	/** An ini file in the temporary folder, removed at the end of the test. */
	struct FTempIni
	{
		FString Filename;
		explicit FTempIni(const TCHAR* Text)
		{
			std::string Template = (std::filesystem::temp_directory_path() / "calvorn-ini-XXXXXX").string();
			const int Handle = ::mkstemp(Template.data());
			EXPECT_GE(Handle, 0);
			::close(Handle);
			Filename = UTF8_TO_TCHAR(Template.c_str());
			Write(Text);
		}
		~FTempIni()
		{
			GConfig->UnloadFile(Filename);
			std::remove(TCHAR_TO_UTF8(*Filename));
		}
		void Write(const TCHAR* Text) const
		{
			ASSERT_TRUE(FFileHelper::SaveStringToFile(Text, *Filename, FFileHelper::EEncodingOptions::ForceUTF8WithoutBOM));
		}
	};
}

TEST(ConfigCacheIniTest, ReadsSectionsKeysCommentsAndQuotedValues)
{
	FConfigFile File;
	File.ProcessInputFileContents(TEXT(
		"Orphan=ignored before any section\n"
		"[/Script/Engine.Engine]\r\n"
		"; a comment\n"
		"# another comment\n"
		"  GameName = Doors  \n"
		"Quoted=\"  spaced \\\"value\\\" \\\\ end \"\n"
		"NoEquals\n"
		"Empty=\n"
		"GameName=Windows\n"
		"[ Other ]\n"
		"Key=1\n"));

	ASSERT_EQ(File.GetSections().Num(), 2);
	EXPECT_EQ(U8(File.GetSections()[1].Name), "Other");
	EXPECT_EQ(U8(*File.FindValue(TEXT("/script/engine.engine"), TEXT("gamename"))), "Windows");
	EXPECT_EQ(U8(*File.FindValue(TEXT("/Script/Engine.Engine"), TEXT("Quoted"))), "  spaced \"value\" \\ end ");
	EXPECT_EQ(U8(*File.FindValue(TEXT("/Script/Engine.Engine"), TEXT("Empty"))), "");
	EXPECT_EQ(File.FindValue(TEXT("/Script/Engine.Engine"), TEXT("NoEquals")), nullptr);
	EXPECT_EQ(File.FindValue(TEXT("/Script/Engine.Engine"), TEXT("Orphan")), nullptr);
	EXPECT_EQ(File.FindValue(TEXT("Missing"), TEXT("Key")), nullptr);
	EXPECT_EQ(Values(File, TEXT("/Script/Engine.Engine"), TEXT("GameName")), (std::vector<std::string>{"Windows"}));
}

TEST(ConfigCacheIniTest, ArrayOperatorsAddRemoveAndClear)
{
	FConfigFile File;
	File.ProcessInputFileContents(TEXT(
		"[Paths]\n"
		"+Dir=A\n"
		"+Dir=B\n"
		"+Dir=A\n"
		".Dir=A\n"
		"-Dir=B\n"
		"+Other=X\n"
		"!Other=ClearArray\n"
		"+Other=Y\n"));
	EXPECT_EQ(Values(File, TEXT("Paths"), TEXT("Dir")), (std::vector<std::string>{"A", "A"}));
	EXPECT_EQ(Values(File, TEXT("Paths"), TEXT("Other")), (std::vector<std::string>{"Y"}));
}

TEST(ConfigCacheIniTest, CacheReadsFilesOnceAndConvertsValues)
{
	FTempIni Ini(TEXT("[Settings]\nbEnabled=True\nbOff=no\nCount=42\nScale=1.5\nName=Door\n+List=a\n+List=b\n"));
	bool bEnabled = false;
	bool bOff = true;
	int32 Count = 0;
	float Scale = 0.0f;
	double ScaleD = 0.0;
	FString Name;
	TArray<FString> List;
	EXPECT_TRUE(GConfig->GetBool(TEXT("Settings"), TEXT("bEnabled"), bEnabled, Ini.Filename));
	EXPECT_TRUE(GConfig->GetBool(TEXT("Settings"), TEXT("bOff"), bOff, Ini.Filename));
	EXPECT_TRUE(GConfig->GetInt(TEXT("Settings"), TEXT("Count"), Count, Ini.Filename));
	EXPECT_TRUE(GConfig->GetFloat(TEXT("Settings"), TEXT("Scale"), Scale, Ini.Filename));
	EXPECT_TRUE(GConfig->GetDouble(TEXT("Settings"), TEXT("Scale"), ScaleD, Ini.Filename));
	EXPECT_TRUE(GConfig->GetString(TEXT("Settings"), TEXT("Name"), Name, Ini.Filename));
	EXPECT_EQ(GConfig->GetArray(TEXT("Settings"), TEXT("List"), List, Ini.Filename), 2);
	EXPECT_TRUE(bEnabled);
	EXPECT_FALSE(bOff);
	EXPECT_EQ(Count, 42);
	EXPECT_FLOAT_EQ(Scale, 1.5f);
	EXPECT_DOUBLE_EQ(ScaleD, 1.5);
	EXPECT_EQ(U8(Name), "Door");

	// A missing key leaves the value alone.
	Name = TEXT("unchanged");
	EXPECT_FALSE(GConfig->GetString(TEXT("Settings"), TEXT("Nope"), Name, Ini.Filename));
	EXPECT_FALSE(GConfig->GetString(TEXT("Nope"), TEXT("Name"), Name, Ini.Filename));
	EXPECT_EQ(U8(Name), "unchanged");

	TArray<FString> Lines;
	EXPECT_TRUE(GConfig->GetSection(TEXT("Settings"), Lines, Ini.Filename));
	EXPECT_EQ(U8(Lines[0]), "bEnabled=True");
	EXPECT_TRUE(GConfig->DoesSectionExist(TEXT("settings"), Ini.Filename));

	// The cache keeps what it read until the file is loaded again.
	Ini.Write(TEXT("[Settings]\nName=Window\n"));
	EXPECT_TRUE(GConfig->GetString(TEXT("Settings"), TEXT("Name"), Name, Ini.Filename));
	EXPECT_EQ(U8(Name), "Door");
	EXPECT_TRUE(GConfig->LoadFile(Ini.Filename));
	EXPECT_TRUE(GConfig->GetString(TEXT("Settings"), TEXT("Name"), Name, Ini.Filename));
	EXPECT_EQ(U8(Name), "Window");

	// Values set in memory are read back.
	GConfig->SetInt(TEXT("Settings"), TEXT("Count"), 7, Ini.Filename);
	GConfig->SetBool(TEXT("New"), TEXT("bFlag"), true, Ini.Filename);
	EXPECT_TRUE(GConfig->GetInt(TEXT("Settings"), TEXT("Count"), Count, Ini.Filename));
	EXPECT_EQ(Count, 7);
	EXPECT_TRUE(GConfig->GetBool(TEXT("New"), TEXT("bFlag"), bEnabled, Ini.Filename));
}

TEST(ConfigCacheIniTest, AMissingFileHasNoValues)
{
	const FString Missing = FPaths::Combine(UTF8_TO_TCHAR(std::filesystem::temp_directory_path().string().c_str()), TEXT("calvorn-no-such-file.ini"));
	FString Value;
	EXPECT_EQ(GConfig->Find(Missing), nullptr);
	EXPECT_FALSE(GConfig->GetString(TEXT("Any"), TEXT("Key"), Value, Missing));
	EXPECT_FALSE(GConfig->LoadFile(Missing));
	GConfig->UnloadFile(Missing);
}
