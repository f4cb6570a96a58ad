#pragma once

#include "CoreMinimal.h"
#include "CalvornToolkitModule.h"
#include "IToolExecutor.h"
#include "ITool.h"
#include "JsonRpc.h"

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Modules/ModuleManager.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace HostTests
{
	inline std::string U8(const FString& Str)
	{
		return FStringToUTF8(Str);
	}

	inline TSharedPtr<FJsonObject> ParseObject(const std::string& Line, FJsonSerializer::EFlags Flags = FJsonSerializer::EFlags::None)
	{
		TSharedPtr<FJsonObject> Object;
		if (!FJsonSerializer::Deserialize(TJsonReaderFactory<UTF8CHAR>::CreateFromView(Line.data(), static_cast<int32>(Line.size())), Object, Flags))
		{
			return nullptr;
		}
		return Object;
	}

	inline std::string ToLine(const TSharedPtr<FJsonObject>& Object)
	{
		return Calvorn::Host::SerializeJsonLine(Object.ToSharedRef());
	}

	/**
	 * Adds the numbers of {"numbers": [...]}. A real tool with the executor's contract: an error ends
	 * the call, an item that is not a number is a "[Failure]" warning and the batch goes on, the
	 * parameter text is reported back as received so tests can see what reached the tool.
	 */
	class FSumNumbersTool : public Calvorn::ITool
	{
	public:
		virtual FString GetSchema() const override
		{
			return TEXT(R"({"type":"object","properties":{"numbers":{"type":"array","items":{"type":"number"}}},"required":["numbers"]})");
		}

		virtual FString GetDescription() const override
		{
			return TEXT("Adds numbers");
		}

		virtual void ValidateCommand(const FString& ParametersJson, Calvorn::FToolResult& Result) const override
		{
			TSharedPtr<FJsonObject> Json;
			if (!FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::Create(ParametersJson), Json) || !Json.IsValid())
			{
				Result.AddErrorMessage(TEXT("Invalid JSON format"));
			}
		}

		virtual FString GetMetadata() override
		{
			return TEXT(R"({"operation_type": "read","data_type": "Test","sub_operation": "sum"})");
		}

		virtual void InvalidateMetadata() override
		{
		}

		virtual void Run(const Calvorn::FToolCommand& Command, TSharedPtr<Calvorn::FToolResult> Result, const Calvorn::FOnToolCompleted& OnCompleted) override
		{
			++RunCount;
			Result->SetData(TEXT("received"), Command.GetParametersJson());
			Result->SetData(TEXT("request_id"), Command.GetRequestId());
			TSharedPtr<FJsonObject> Json;
			const TArray<TSharedPtr<FJsonValue>>* Numbers = nullptr;
			if (!FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::Create(Command.GetParametersJson()), Json) || !Json.IsValid())
			{
				Result->AddErrorMessage(TEXT("Invalid JSON command"));
			}
			else if (!Json->TryGetArrayField(TEXT("numbers"), Numbers))
			{
				Result->AddErrorMessage(TEXT("Missing required field 'numbers'"));
			}
			else
			{
				double Sum = 0;
				for (int32 Index = 0; Index < Numbers->Num(); ++Index)
				{
					double Value = 0;
					if ((*Numbers)[Index]->Type == EJson::Number && (*Numbers)[Index]->TryGetNumber(Value))
					{
						Sum += Value;
					}
					else
					{
						Result->AddWarningMessage(FString::Printf(TEXT("[Failure] Item %d is not a number"), Index));
					}
				}
				Result->SetData(TEXT("sum"), FString::Printf(TEXT("%g"), Sum));
				Result->AddSuccessMessage(FString::Printf(TEXT("Added %d numbers"), Numbers->Num()));
			}
			OnCompleted.ExecuteIfBound(*Result);
		}

		int32 RunCount = 0;
	};

	/** A tool without a schema of its own, whose metadata says it modifies. */
	class FNoteTool : public Calvorn::ITool
	{
	public:
		virtual FString GetSchema() const override { return FString(); }
		virtual FString GetDescription() const override { return TEXT("Keeps a note"); }
		virtual void ValidateCommand(const FString& ParametersJson, Calvorn::FToolResult& Result) const override {}
		virtual FString GetMetadata() override { return TEXT(R"({"operation_type": "modify","data_type": "Test"})"); }
		virtual void InvalidateMetadata() override {}

		virtual void Run(const Calvorn::FToolCommand& Command, TSharedPtr<Calvorn::FToolResult> Result, const Calvorn::FOnToolCompleted& OnCompleted) override
		{
			Result->AddSuccessMessage(TEXT("Noted"));
			OnCompleted.ExecuteIfBound(*Result);
		}
	};

	/** Starts the CalvornToolkit module and registers the two test tools with its executor. */
	class FHostToolsTest : public ::testing::Test
	{
	protected:
		virtual void SetUp() override
		{
			ASSERT_NE(FModuleManager::Get().LoadModule(TEXT("CalvornToolkit")), nullptr);
			Executor = FCalvornToolkitModule::GetToolExecutor();
			ASSERT_TRUE(Executor.IsValid());
			SumTool = MakeShared<FSumNumbersTool>();
			ASSERT_TRUE(Executor->RegisterTool(TEXT("sum_numbers"), SumTool));
			ASSERT_TRUE(Executor->RegisterTool(TEXT("keep_note"), MakeShared<FNoteTool>()));
		}

		virtual void TearDown() override
		{
			if (Executor.IsValid())
			{
				Executor->UnregisterTool(TEXT("sum_numbers"));
				Executor->UnregisterTool(TEXT("keep_note"));
			}
			Executor.Reset();
			FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit"));
		}

		TSharedPtr<Calvorn::IToolExecutor> Executor;
		TSharedPtr<FSumNumbersTool> SumTool;
	};
}

inline void PrintTo(const FString& Str, std::ostream* Out)
{
	*Out << '"' << FStringToUTF8(Str) << '"';
}
