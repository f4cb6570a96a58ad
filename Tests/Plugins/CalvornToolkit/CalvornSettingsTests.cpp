#include "CalvornSettings.h"
#include "Headless/Core/StringTestUtils.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

#include <gtest/gtest.h>

namespace
{
	class CalvornSettingsTest : public ::testing::Test
	{
	protected:
		~CalvornSettingsTest() override
		{
			UE::Headless::CloseProject();
			// Leave the defaults as the next test expects them.
			GetMutableDefault<UCalvornSettings>()->ReloadConfig();
		}

		void WriteConfig(const TCHAR* Text)
		{
			Project.WriteFile(TEXT("Config/DefaultEditor.ini"), Text);
		}

		FTempProjectFolder Project;
	};
}

TEST_F(CalvornSettingsTest, NamesItsSectionAfterTheClass)
{
	EXPECT_EQ(U8(UCalvornSettings::GetConfigSectionName()), "/Script/CalvornToolkit.CalvornSettings");
	EXPECT_EQ(U8(UCalvornSettings::GetConfigFileName()), "DefaultEditor.ini");
	EXPECT_TRUE(UCalvornSettings::StaticClass()->HasAnyClassFlags(CLASS_Config));
	EXPECT_EQ(U8(UCalvornSettings::StaticClass()->ClassConfigName.ToString()), "Editor");
	EXPECT_NE(UCalvornSettings::StaticClass()->FindPropertyByName(TEXT("bFocusOnNewNodes")), nullptr);
}

TEST_F(CalvornSettingsTest, ReadsTheFocusFlagFromTheProjectConfig)
{
	UCalvornSettings* Settings = GetMutableDefault<UCalvornSettings>();
	Project.Open();
	// No Config folder: the built-in default.
	EXPECT_TRUE(Settings->ReloadConfig());
	EXPECT_TRUE(GetDefault<UCalvornSettings>()->bFocusOnNewNodes);

	WriteConfig(TEXT("; project settings\n[/Script/Engine.Engine]\nbFocusOnNewNodes=True\n\n[/Script/CalvornToolkit.CalvornSettings]\nbFocusOnNewNodes=False\n"));
	EXPECT_TRUE(Settings->ReloadConfig());
	EXPECT_FALSE(GetDefault<UCalvornSettings>()->bFocusOnNewNodes);

	// The section and key names ignore case, as the engine's do.
	WriteConfig(TEXT("[/script/calvorntoolkit.calvornsettings]\nbfocusonnewnodes=true\n"));
	EXPECT_TRUE(Settings->ReloadConfig());
	EXPECT_TRUE(GetDefault<UCalvornSettings>()->bFocusOnNewNodes);

	// A key that goes away gives the built-in value back, not the one read last.
	WriteConfig(TEXT("[/Script/CalvornToolkit.CalvornSettings]\nbFocusOnNewNodes=False\n"));
	EXPECT_TRUE(Settings->ReloadConfig());
	EXPECT_FALSE(GetDefault<UCalvornSettings>()->bFocusOnNewNodes);
	WriteConfig(TEXT("[/Script/CalvornToolkit.CalvornSettings]\n"));
	EXPECT_TRUE(Settings->ReloadConfig());
	EXPECT_TRUE(GetDefault<UCalvornSettings>()->bFocusOnNewNodes);
}

TEST_F(CalvornSettingsTest, AnUnreadableValueKeepsTheDefaultAndIsReported)
{
	UCalvornSettings* Settings = GetMutableDefault<UCalvornSettings>();
	Project.Open();
	WriteConfig(TEXT("[/Script/CalvornToolkit.CalvornSettings]\nbFocusOnNewNodes=perhaps\n"));
	TArray<FString> Errors;
	EXPECT_FALSE(Settings->ReloadConfig(&Errors));
	EXPECT_TRUE(GetDefault<UCalvornSettings>()->bFocusOnNewNodes);
	ASSERT_EQ(Errors.Num(), 1);
	EXPECT_NE(U8(Errors[0]).find("bFocusOnNewNodes=perhaps"), std::string::npos) << U8(Errors[0]);
	EXPECT_NE(U8(Errors[0]).find("DefaultEditor.ini"), std::string::npos) << U8(Errors[0]);
}

TEST_F(CalvornSettingsTest, AnObjectOtherThanTheDefaultsStartsFromThem)
{
	Project.Open();
	WriteConfig(TEXT("[/Script/CalvornToolkit.CalvornSettings]\nbFocusOnNewNodes=False\n"));
	UCalvornSettings* Defaults = GetMutableDefault<UCalvornSettings>();
	ASSERT_TRUE(Defaults->ReloadConfig());
	UCalvornSettings* Copy = NewObject<UCalvornSettings>(GetTransientPackage());
	Copy->bFocusOnNewNodes = true;
	ASSERT_TRUE(Copy->ReloadConfig());
	EXPECT_FALSE(Copy->bFocusOnNewNodes);
}
