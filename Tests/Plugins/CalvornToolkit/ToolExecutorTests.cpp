#include "CalvornToolkitModule.h"
#include "Dom/JsonObject.h"
#include "Headless/Core/StringTestUtils.h"
#include "IToolExecutor.h"
#include "ModificationReadRegistry.h"
#include "Modules/ModuleManager.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "ToolInfo.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

using namespace Calvorn;

namespace
{
	/** A tool whose behaviour each test chooses; counts its runs. */
	class FScriptedTool : public ITool
	{
	public:
		using FBody = TFunction<void(const FToolCommand&, TSharedPtr<FToolResult>, const FOnToolCompleted&)>;

		explicit FScriptedTool(FBody InBody, FString InSchema = FString(), FString InMetadata = TEXT("{}"))
			: Body(MoveTemp(InBody)), Schema(MoveTemp(InSchema)), Metadata(MoveTemp(InMetadata))
		{
		}

		virtual FString GetSchema() const override { return Schema; }
		virtual FString GetDescription() const override { return TEXT("A scripted test tool"); }
		virtual void ValidateCommand(const FString& ParametersJson, FToolResult& Result) const override {}
		virtual FString GetMetadata() override { return Metadata; }
		virtual void InvalidateMetadata() override {}
		virtual void Run(const FToolCommand& Command, TSharedPtr<FToolResult> Result, const FOnToolCompleted& OnCompleted) override
		{
			++Runs;
			Body(Command, Result, OnCompleted);
		}

		int32 Runs = 0;

	private:
		FBody Body;
		FString Schema;
		FString Metadata;
	};

	/**
	 * Runs like the Blueprint module's adapter: parse, two errors for anything that is not an object,
	 * otherwise the "operation", then complete once on either path.
	 */
	TSharedPtr<FScriptedTool> MakeAdapterLikeTool(TArray<FString>* OutReached = nullptr)
	{
		return MakeShared<FScriptedTool>([OutReached](const FToolCommand& Command, TSharedPtr<FToolResult> Result, const FOnToolCompleted& OnCompleted)
		{
			TSharedPtr<FJsonObject> Json;
			if (!FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::Create(Command.GetParametersJson()), Json) || !Json.IsValid())
			{
				Result->AddErrorMessage(TEXT("Invalid JSON command"));
				Result->AddErrorMessage(TEXT("Failed to parse command JSON"));
			}
			else
			{
				if (OutReached)
				{
					OutReached->Add(Command.GetParametersJson());
				}
				FString Path;
				if (!Json->TryGetStringField(TEXT("path"), Path))
				{
					Result->AddErrorMessage(TEXT("Missing required field 'path'"));
				}
				else
				{
					Result->AddSuccessMessage(TEXT("ok ") + Path);
				}
			}
			OnCompleted.ExecuteIfBound(*Result);
		});
	}

	TSharedPtr<IToolExecutor> MakeExecutor()
	{
		FModuleManager::Get().LoadModule(TEXT("CalvornToolkit"));
		TSharedPtr<IToolExecutor> Executor = FCalvornToolkitModule::GetToolExecutor();
		EXPECT_TRUE(Executor.IsValid());
		return Executor;
	}

	class ToolExecutorTest : public ::testing::Test
	{
	protected:
		void TearDown() override
		{
			FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit"));
		}
	};
}

TEST_F(ToolExecutorTest, ModuleHandsOutAnExecutorOnlyWhileLoaded)
{
	FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit"));
	EXPECT_FALSE(FCalvornToolkitModule::GetToolExecutor().IsValid());
	ASSERT_NE(FModuleManager::Get().LoadModule(TEXT("CalvornToolkit")), nullptr);
	const TSharedPtr<IToolExecutor> Executor = FCalvornToolkitModule::GetToolExecutor();
	ASSERT_TRUE(Executor.IsValid());
	EXPECT_EQ(Executor.Get(), FCalvornToolkitModule::GetToolExecutor().Get());
	EXPECT_EQ(Executor->GetToolNames().Num(), 0);
	FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit"));
	EXPECT_FALSE(FCalvornToolkitModule::GetToolExecutor().IsValid());
}

TEST_F(ToolExecutorTest, RegistrationRefusesEmptyNullAndDuplicateNames)
{
	const TSharedPtr<IToolExecutor> Executor = MakeExecutor();
	const TSharedPtr<ITool> Tool = MakeAdapterLikeTool();
	EXPECT_TRUE(Executor->RegisterTool(TEXT("bp_create_graph"), Tool));
	EXPECT_TRUE(Executor->RegisterTool(TEXT("compile_blueprint"), MakeAdapterLikeTool()));
	EXPECT_TRUE(Executor->RegisterTool(TEXT("aaa_last"), MakeAdapterLikeTool()));
	EXPECT_FALSE(Executor->RegisterTool(TEXT(""), MakeAdapterLikeTool()));
	EXPECT_FALSE(Executor->RegisterTool(TEXT("null_tool"), nullptr));
	EXPECT_FALSE(Executor->RegisterTool(TEXT("BP_Create_Graph"), MakeAdapterLikeTool()));

	const TArray<FString> Names = Executor->GetToolNames();
	ASSERT_EQ(Names.Num(), 3);
	EXPECT_EQ(U8(Names[0]), "bp_create_graph");
	EXPECT_EQ(U8(Names[1]), "compile_blueprint");
	EXPECT_EQ(U8(Names[2]), "aaa_last");
	EXPECT_EQ(Executor->FindTool(TEXT("BP_CREATE_GRAPH")).Get(), Tool.Get());
	EXPECT_FALSE(Executor->FindTool(TEXT("null_tool")).IsValid());

	EXPECT_TRUE(Executor->UnregisterTool(TEXT("Compile_Blueprint")));
	EXPECT_FALSE(Executor->UnregisterTool(TEXT("compile_blueprint")));
	EXPECT_EQ(Executor->GetToolNames().Num(), 2);
	EXPECT_EQ(U8(Executor->GetToolNames()[1]), "aaa_last");
	// A name freed by unregistering can be taken again.
	EXPECT_TRUE(Executor->RegisterTool(TEXT("compile_blueprint"), MakeAdapterLikeTool()));
}

TEST_F(ToolExecutorTest, UnknownToolGivesAnErrorResult)
{
	const TSharedPtr<IToolExecutor> Executor = MakeExecutor();
	const FToolResult Result = Executor->ExecuteCommand(FToolCommand(TEXT("r1"), TEXT("no_such_tool"), TEXT("{}")));
	EXPECT_FALSE(Result.WasSuccessful());
	ASSERT_EQ(Result.GetErrorMessages().Num(), 1);
	EXPECT_EQ(U8(Result.GetErrorMessages()[0]), "Unknown tool: no_such_tool");
	EXPECT_EQ(U8(Result.GetRequestId()), "r1");
}

TEST_F(ToolExecutorTest, CommandTextReachesTheToolOrFailsAsTheAdapterSays)
{
	const TSharedPtr<IToolExecutor> Executor = MakeExecutor();
	TArray<FString> Reached;
	const TSharedPtr<FScriptedTool> Tool = MakeAdapterLikeTool(&Reached);
	Executor->RegisterTool(TEXT("delete_blueprint"), Tool);

	struct FCase
	{
		const TCHAR* Parameters;
		std::vector<std::string> Errors;
		bool bReachesOperation;
	};
	const FCase Cases[] = {
		{TEXT("not json"), {"Invalid JSON command", "Failed to parse command JSON"}, false},
		{TEXT("[1, 2]"), {"Invalid JSON command", "Failed to parse command JSON"}, false},
		{TEXT(""), {"Invalid JSON command", "Failed to parse command JSON"}, false},
		{TEXT("{}"), {"Missing required field 'path'"}, true},
		{TEXT("{\"path\": \"/Game/BP\"}"), {}, true},
	};
	for (const FCase& Case : Cases)
	{
		Reached.Reset();
		const int32 RunsBefore = Tool->Runs;
		const FToolResult Result = Executor->ExecuteCommand(FToolCommand(TEXT("id"), TEXT("delete_blueprint"), Case.Parameters));
		std::vector<std::string> Errors;
		for (const FString& Error : Result.GetErrorMessages())
		{
			Errors.push_back(U8(Error));
		}
		EXPECT_EQ(Errors, Case.Errors) << U8(Case.Parameters);
		EXPECT_EQ(Reached.Num() == 1, Case.bReachesOperation) << U8(Case.Parameters);
		EXPECT_EQ(Tool->Runs, RunsBefore + 1);
		EXPECT_EQ(Result.WasSuccessful(), Case.Errors.empty());
	}
}

TEST_F(ToolExecutorTest, ReturnsTheCompletedResultAndReportsBrokenCompletions)
{
	const TSharedPtr<IToolExecutor> Executor = MakeExecutor();
	Executor->RegisterTool(TEXT("silent"), MakeShared<FScriptedTool>([](const FToolCommand&, TSharedPtr<FToolResult> Result, const FOnToolCompleted&)
	{
		Result->AddWarningMessage(TEXT("worked but never said so"));
	}));
	Executor->RegisterTool(TEXT("twice"), MakeShared<FScriptedTool>([](const FToolCommand&, TSharedPtr<FToolResult> Result, const FOnToolCompleted& OnCompleted)
	{
		Result->AddSuccessMessage(TEXT("first"));
		OnCompleted.ExecuteIfBound(*Result);
		Result->AddSuccessMessage(TEXT("second"));
		OnCompleted.ExecuteIfBound(*Result);
	}));
	Executor->RegisterTool(TEXT("own_result"), MakeShared<FScriptedTool>([](const FToolCommand& Command, TSharedPtr<FToolResult>, const FOnToolCompleted& OnCompleted)
	{
		// A tool may complete with a result of its own; that is the one returned.
		FToolResult Own(Command);
		Own.SetData(TEXT("from"), TEXT("own"));
		OnCompleted.ExecuteIfBound(Own);
	}));

	const FToolResult Silent = Executor->ExecuteCommand(FToolCommand(TEXT("1"), TEXT("silent"), TEXT("{}")));
	EXPECT_FALSE(Silent.WasSuccessful());
	ASSERT_EQ(Silent.GetErrorMessages().Num(), 1);
	EXPECT_NE(U8(Silent.GetErrorMessages()[0]).find("silent"), std::string::npos);
	EXPECT_EQ(Silent.GetWarningMessages().Num(), 1);

	const FToolResult Twice = Executor->ExecuteCommand(FToolCommand(TEXT("2"), TEXT("twice"), TEXT("{}")));
	ASSERT_EQ(Twice.GetSuccessMessages().Num(), 1);
	EXPECT_EQ(U8(Twice.GetSuccessMessages()[0]), "first");
	EXPECT_FALSE(Twice.WasSuccessful());

	const FToolResult Own = Executor->ExecuteCommand(FToolCommand(TEXT("3"), TEXT("own_result"), TEXT("{}")));
	EXPECT_TRUE(Own.WasSuccessful());
	EXPECT_EQ(U8(Own.GetDatas()->GetStringField(TEXT("from"))), "own");
	EXPECT_EQ(U8(Own.GetRequestId()), "3");
}

TEST_F(ToolExecutorTest, OneCallAtATime)
{
	const TSharedPtr<IToolExecutor> Executor = MakeExecutor();
	FToolResult Inner;
	IToolExecutor* Raw = Executor.Get();
	Executor->RegisterTool(TEXT("inner"), MakeAdapterLikeTool());
	Executor->RegisterTool(TEXT("outer"), MakeShared<FScriptedTool>([Raw, &Inner](const FToolCommand&, TSharedPtr<FToolResult> Result, const FOnToolCompleted& OnCompleted)
	{
		Inner = Raw->ExecuteCommand(FToolCommand(TEXT("nested"), TEXT("inner"), TEXT("{\"path\": \"/Game/X\"}")));
		OnCompleted.ExecuteIfBound(*Result);
	}));

	const FToolResult Outer = Executor->ExecuteCommand(FToolCommand(TEXT("o"), TEXT("outer"), TEXT("{}")));
	EXPECT_TRUE(Outer.WasSuccessful());
	EXPECT_FALSE(Inner.WasSuccessful());
	ASSERT_EQ(Inner.GetErrorMessages().Num(), 1);
	EXPECT_NE(U8(Inner.GetErrorMessages()[0]).find("one call at a time"), std::string::npos);

	// Once the outer call is over the executor takes calls again.
	EXPECT_TRUE(Executor->ExecuteCommand(FToolCommand(TEXT("i"), TEXT("inner"), TEXT("{\"path\": \"/Game/X\"}"))).WasSuccessful());
}

TEST_F(ToolExecutorTest, CallsFromSeveralThreadsWaitForEachOther)
{
	const TSharedPtr<IToolExecutor> Executor = MakeExecutor();
	std::atomic<int32> Running{0};
	std::atomic<int32> MostAtOnce{0};
	Executor->RegisterTool(TEXT("slow"), MakeShared<FScriptedTool>([&Running, &MostAtOnce](const FToolCommand&, TSharedPtr<FToolResult> Result, const FOnToolCompleted& OnCompleted)
	{
		const int32 Now = ++Running;
		int32 Seen = MostAtOnce.load();
		while (Now > Seen && !MostAtOnce.compare_exchange_weak(Seen, Now))
		{
		}
		std::this_thread::sleep_for(std::chrono::milliseconds(20));
		--Running;
		Result->AddSuccessMessage(TEXT("done"));
		OnCompleted.ExecuteIfBound(*Result);
	}));

	std::atomic<int32> Succeeded{0};
	std::vector<std::thread> Threads;
	for (int32 Index = 0; Index < 4; ++Index)
	{
		Threads.emplace_back([&Executor, &Succeeded]()
		{
			if (Executor->ExecuteCommand(FToolCommand(TEXT("t"), TEXT("slow"), TEXT("{}"))).WasSuccessful())
			{
				++Succeeded;
			}
		});
	}
	for (std::thread& Thread : Threads)
	{
		Thread.join();
	}
	EXPECT_EQ(Succeeded.load(), 4);
	EXPECT_EQ(MostAtOnce.load(), 1);
}

TEST_F(ToolExecutorTest, ListsToolsWithTheirSchemaCategoryAndMetadata)
{
	const TSharedPtr<IToolExecutor> Executor = MakeExecutor();
	auto Complete = [](const FToolCommand&, TSharedPtr<FToolResult> Result, const FOnToolCompleted& OnCompleted) { OnCompleted.ExecuteIfBound(*Result); };
	// A known tool name: the core module's schema wins over the tool's own text.
	Executor->RegisterTool(ToolInfo::ToolName_CompileBlueprint, MakeShared<FScriptedTool>(Complete, TEXT(""), TEXT("{\"operation_type\": \"compile\",\"data_type\": \"Blueprint\"}")));
	// Unknown names: the tool's own schema, else "{}".
	Executor->RegisterTool(TEXT("custom_tool"), MakeShared<FScriptedTool>(Complete, TEXT("{\"type\":\"object\"}"), TEXT("{}")));
	Executor->RegisterTool(TEXT("bare_tool"), MakeShared<FScriptedTool>(Complete, TEXT("  "), TEXT("not json")));
	FModificationReadRegistry::Get().RegisterReadTool(TEXT("custom_tool"), TEXT("Reads"), [](TSharedPtr<FJsonObject>, FToolResult&) { return FString(); });

	const TArray<FToolDescriptor> Tools = Executor->ListTools();
	FModificationReadRegistry::Get().UnregisterReadTool(TEXT("custom_tool"));
	ASSERT_EQ(Tools.Num(), 3);

	EXPECT_EQ(U8(Tools[0].Name), "compile_blueprint");
	EXPECT_EQ(U8(Tools[0].Description), "A scripted test tool");
	EXPECT_EQ(U8(Tools[0].Category), "Blueprint");
	EXPECT_EQ(U8(Tools[0].MetadataJson), "{\"operation_type\": \"compile\",\"data_type\": \"Blueprint\"}");
	TSharedPtr<FJsonObject> Schema;
	ASSERT_TRUE(FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::Create(Tools[0].SchemaJson), Schema));
	EXPECT_TRUE(Schema->GetObjectField(TEXT("properties"))->HasField(TEXT("blueprint_paths")));

	EXPECT_EQ(U8(Tools[1].SchemaJson), "{\"type\":\"object\"}");
	EXPECT_EQ(U8(Tools[1].Category), "Reads");
	EXPECT_EQ(U8(Tools[2].SchemaJson), "{}");
	EXPECT_EQ(U8(Tools[2].Category), "");
}
