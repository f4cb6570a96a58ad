#pragma once

#include "CoreMinimal.h"
#include "AssetRegistry/IAssetRegistry.h"
#include "CalvornToolkitBlueprintModule.h"
#include "CalvornToolkitModule.h"
#include "Dom/JsonObject.h"
#include "Headless/Core/StringTestUtils.h"
#include "Headless/Projects/TempProjectFolder.h"
#include "IToolExecutor.h"
#include "Modules/ModuleManager.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "ToolCommand.h"
#include "ToolResult.h"

#include <gtest/gtest.h>

#include <string>

namespace ToolSurfaceTests
{
	/** All messages of a result, one per line, for failure output. */
	inline std::string Describe(const Calvorn::FToolResult& Result)
	{
		std::string Text;
		for (const FString& Message : Result.GetErrorMessages())
		{
			Text += "error: " + U8(Message) + "\n";
		}
		for (const FString& Message : Result.GetWarningMessages())
		{
			Text += "warning: " + U8(Message) + "\n";
		}
		for (const FString& Message : Result.GetSuccessMessages())
		{
			Text += "success: " + U8(Message) + "\n";
		}
		return Text;
	}

	inline TSharedPtr<FJsonObject> ParseJson(const FString& Text)
	{
		TSharedPtr<FJsonObject> Object;
		FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::Create(Text), Object);
		return Object;
	}

	/** Whether any message of the list contains the text. */
	inline bool AnyContains(const TArray<FString>& Messages, const FString& Part)
	{
		for (const FString& Message : Messages)
		{
			if (Message.Contains(Part, ESearchCase::CaseSensitive))
			{
				return true;
			}
		}
		return false;
	}

	/**
	 * A fresh project with the tool modules started as the host starts them: each tool call goes through
	 * the executor with a JSON text, exactly as a client's does.
	 */
	class FToolSession : public ::testing::Test
	{
	protected:
		FToolSession()
		{
			Project.Open();
			UE::Headless::ResetAssetRegistry();
			FModuleManager::Get().LoadModule(TEXT("CalvornToolkit"));
			FModuleManager::Get().LoadModule(TEXT("CalvornToolkit_Blueprint"));
		}

		~FToolSession() override
		{
			FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit_Blueprint"));
			FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit"));
			UE::Headless::CloseProject();
			UE::Headless::ResetAssetRegistry();
		}

		Calvorn::FToolResult Call(const FString& ToolName, const FString& ParametersJson)
		{
			const TSharedPtr<Calvorn::IToolExecutor> Executor = FCalvornToolkitModule::GetToolExecutor();
			EXPECT_TRUE(Executor.IsValid());
			if (!Executor.IsValid())
			{
				return Calvorn::FToolResult();
			}
			return Executor->ExecuteCommand(Calvorn::FToolCommand(TEXT("test"), ToolName, ParametersJson));
		}

		FString ContentFile(const FString& Relative) const
		{
			return Project.Path(TEXT("Content") / Relative);
		}

		FTempProjectFolder Project;
	};
}
