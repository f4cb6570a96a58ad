#include "ToolSurfaceTestSupport.h"

#include "ModificationReadRegistry.h"
#include "OperationToolCommand.h"
#include "ToolInfo.h"

using namespace ToolSurfaceTests;
using Calvorn::FToolCommand;
using Calvorn::FToolResult;

namespace
{
	/** Records what reached it, so the adapter's part of a call can be seen on its own. */
	struct FRecordingOperation
	{
		static inline int32 Calls = 0;
		static inline FString LastName;

		static void Execute(const FJsonObject& Json, FToolResult& Result)
		{
			++Calls;
			LastName.Reset();
			if (!Json.TryGetStringField(TEXT("name"), LastName))
			{
				Result.AddErrorMessage(TEXT("Missing required field 'name'"));
				return;
			}
			Result.SetData(TEXT("echo"), LastName);
			Result.AddSuccessMessage(TEXT("done"));
		}
	};

	using FRecordingTool = Calvorn::TOperationToolCommand<FRecordingOperation>;

	struct FRunOutcome
	{
		FToolResult Result;
		int32 Completions = 0;
		int32 OperationCalls = 0;
	};

	FRunOutcome RunAdapter(const FString& Parameters)
	{
		FRecordingTool Tool(TEXT(""), TEXT("Records"), TEXT("{}"));
		FRunOutcome Outcome;
		const int32 CallsBefore = FRecordingOperation::Calls;
		TSharedPtr<FToolResult> Result = MakeShared<FToolResult>();
		Tool.Run(FToolCommand(TEXT("1"), TEXT("record"), Parameters), Result,
			Calvorn::FOnToolCompleted::CreateLambda([&Outcome](FToolResult& Completed)
			{
				++Outcome.Completions;
				Outcome.Result = Completed;
			}));
		Outcome.OperationCalls = FRecordingOperation::Calls - CallsBefore;
		return Outcome;
	}

	class ToolSurfaceModule : public ::testing::Test
	{
	protected:
		void TearDown() override
		{
			FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit_Blueprint"));
			FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit"));
		}
	};
}

TEST(ToolSurfaceAdapter, ParameterTextThatIsNoObjectNeverReachesTheOperation)
{
	const struct
	{
		const TCHAR* Parameters;
		bool bReachesOperation;
	} Cases[] = {
		{TEXT("not json"), false},
		{TEXT(""), false},
		{TEXT("[1, 2]"), false},
		{TEXT("\"text\""), false},
		{TEXT("{\"name\": "), false},
		{TEXT("{}"), true},
		{TEXT("{\"name\": \"Door\"}"), true},
	};
	for (const auto& Case : Cases)
	{
		SCOPED_TRACE(U8(Case.Parameters));
		const FRunOutcome Outcome = RunAdapter(Case.Parameters);
		EXPECT_EQ(Outcome.Completions, 1);
		EXPECT_EQ(Outcome.OperationCalls, Case.bReachesOperation ? 1 : 0);
		if (!Case.bReachesOperation)
		{
			ASSERT_EQ(Outcome.Result.GetErrorMessages().Num(), 2);
			EXPECT_EQ(Outcome.Result.GetErrorMessages()[0], TEXT("Invalid JSON command"));
			EXPECT_EQ(Outcome.Result.GetErrorMessages()[1], TEXT("Failed to parse command JSON"));
			EXPECT_FALSE(Outcome.Result.WasSuccessful());
		}
	}
	// An empty object reaches the operation, which names its own missing field.
	const FRunOutcome Empty = RunAdapter(TEXT("{}"));
	ASSERT_EQ(Empty.Result.GetErrorMessages().Num(), 1);
	EXPECT_EQ(Empty.Result.GetErrorMessages()[0], TEXT("Missing required field 'name'"));
	const FRunOutcome Named = RunAdapter(TEXT("{\"name\": \"Door\"}"));
	EXPECT_TRUE(Named.Result.WasSuccessful()) << Describe(Named.Result);
	EXPECT_EQ(Named.Result.GetDatas()->GetStringField(TEXT("echo")), TEXT("Door"));
}

TEST(ToolSurfaceAdapter, ValidationAndMetadata)
{
	FRecordingTool Tool(TEXT("{}"), TEXT("Records"), TEXT("{\"operation_type\": \"read\"}"));
	FToolResult Bad;
	Tool.ValidateCommand(TEXT("[1]"), Bad);
	ASSERT_EQ(Bad.GetErrorMessages().Num(), 1);
	EXPECT_EQ(Bad.GetErrorMessages()[0], TEXT("Invalid JSON format"));
	FToolResult Good;
	Tool.ValidateCommand(TEXT("{\"anything\": 1}"), Good);
	EXPECT_EQ(Good.GetErrorMessages().Num(), 0);

	// Without a provider the text built at registration stands, whatever is invalidated.
	EXPECT_EQ(Tool.GetMetadata(), TEXT("{\"operation_type\": \"read\"}"));
	Tool.InvalidateMetadata();
	EXPECT_EQ(Tool.GetMetadata(), TEXT("{\"operation_type\": \"read\"}"));
	EXPECT_EQ(Tool.GetSchema(), TEXT("{}"));
	EXPECT_EQ(Tool.GetDescription(), TEXT("Records"));

	// A provider is asked only after an invalidation, and once per invalidation; a text too short to be
	// JSON becomes "{}".
	int32 ProviderCalls = 0;
	Tool.SetMetadataProvider([&ProviderCalls]() { ++ProviderCalls; return ProviderCalls == 1 ? FString(TEXT("{\"v\": 1}")) : FString(TEXT("x")); });
	EXPECT_EQ(Tool.GetMetadata(), TEXT("{\"operation_type\": \"read\"}"));
	EXPECT_EQ(ProviderCalls, 0);
	Tool.InvalidateMetadata();
	EXPECT_EQ(Tool.GetMetadata(), TEXT("{\"v\": 1}"));
	EXPECT_EQ(Tool.GetMetadata(), TEXT("{\"v\": 1}"));
	EXPECT_EQ(ProviderCalls, 1);
	Tool.InvalidateMetadata();
	EXPECT_EQ(Tool.GetMetadata(), TEXT("{}"));
	EXPECT_EQ(ProviderCalls, 2);

	FRecordingTool Blank(TEXT(""), TEXT(""), TEXT(""));
	EXPECT_EQ(Blank.GetMetadata(), TEXT("{}"));
}

TEST_F(ToolSurfaceModule, WithoutAnExecutorNothingIsRegistered)
{
	const TArray<FString> ReadToolsBefore = Calvorn::FModificationReadRegistry::Get().GetReadToolNames();
	FCalvornToolkitBlueprintModule Module;
	Module.StartupModule();
	EXPECT_EQ(Module.GetRegisteredToolNames().Num(), 0);
	EXPECT_EQ(Calvorn::FModificationReadRegistry::Get().GetReadToolNames(), ReadToolsBefore);
	Module.ShutdownModule();
	EXPECT_EQ(Calvorn::FModificationReadRegistry::Get().GetReadToolNames(), ReadToolsBefore);
}

TEST_F(ToolSurfaceModule, RegistersEveryProvidedToolInCatalogueOrderAndTakesThemBack)
{
	ASSERT_NE(FModuleManager::Get().LoadModule(TEXT("CalvornToolkit")), nullptr);
	const TSharedPtr<Calvorn::IToolExecutor> Executor = FCalvornToolkitModule::GetToolExecutor();
	ASSERT_TRUE(Executor.IsValid());
	ASSERT_NE(FModuleManager::Get().LoadModule(TEXT("CalvornToolkit_Blueprint")), nullptr);
	const FCalvornToolkitBlueprintModule* Module = FModuleManager::GetModulePtr<FCalvornToolkitBlueprintModule>(TEXT("CalvornToolkit_Blueprint"));
	ASSERT_NE(Module, nullptr);

	const TArray<FString> Provided = FCalvornToolkitBlueprintModule::GetProvidedToolNames();
	EXPECT_GT(Provided.Num(), 0);
	EXPECT_EQ(Module->GetRegisteredToolNames(), Provided);
	EXPECT_EQ(Executor->GetToolNames(), Provided);

	// The catalogue's order is the order of the full list of tools, with the missing ones left out.
	const TArray<FString> AllNames = Calvorn::ToolInfo::GetAllToolNames();
	int32 LastIndex = -1;
	for (const FString& Name : Provided)
	{
		const int32 Index = AllNames.IndexOfByKey(Name);
		EXPECT_GT(Index, LastIndex) << U8(Name);
		LastIndex = Index;
	}

	for (const FString& Name : FCalvornToolkitBlueprintModule::GetProvidedReadToolNames())
	{
		EXPECT_TRUE(Calvorn::FModificationReadRegistry::Get().IsReadToolRegistered(Name)) << U8(Name);
		EXPECT_EQ(Calvorn::FModificationReadRegistry::Get().GetReadToolCategory(Name), Calvorn::ToolInfo::CategoryName_Blueprint);
	}

	FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit_Blueprint"));
	EXPECT_EQ(Executor->GetToolNames().Num(), 0);
	for (const FString& Name : FCalvornToolkitBlueprintModule::GetProvidedReadToolNames())
	{
		EXPECT_FALSE(Calvorn::FModificationReadRegistry::Get().IsReadToolRegistered(Name)) << U8(Name);
	}
}

TEST_F(ToolSurfaceModule, DescriptionsAndMetadataAreWhatClientsRead)
{
	ASSERT_NE(FModuleManager::Get().LoadModule(TEXT("CalvornToolkit")), nullptr);
	ASSERT_NE(FModuleManager::Get().LoadModule(TEXT("CalvornToolkit_Blueprint")), nullptr);
	const TSharedPtr<Calvorn::IToolExecutor> Executor = FCalvornToolkitModule::GetToolExecutor();

	const struct
	{
		const TCHAR* Name;
		const TCHAR* Metadata;
		const TCHAR* Description;
	} Expected[] = {
		{TEXT("bp_create_graph"), TEXT("{\"operation_type\": \"modify\",\"data_type\": \"Blueprint\"}"),
			TEXT("[INTERNAL TOOL] Create or configure Blueprint functions and delegate signatures (no node operations). Accepts batched 'functions' array with optional parameters/return_type metadata. Use with bp_populate_graph for node/connection workflows to maintain separation of concerns.")},
		{TEXT("bp_create_asset"), TEXT("{\"operation_type\": \"create\",\"data_type\": \"Blueprint\"}"),
			TEXT("Creates a new Unreal Engine Blueprint, Animation Blueprint, Widget Blueprint, or Behavior Tree Task asset at the specified path with the specified parent class")},
		{TEXT("delete_blueprint"), TEXT("{\"operation_type\": \"delete\",\"data_type\": \"Blueprint\"}"), TEXT("Remove a Blueprint asset from the project")},
		{TEXT("compile_blueprint"), TEXT("{\"operation_type\": \"compile\",\"data_type\": \"Blueprint\"}"),
			TEXT("Compile one or more Blueprint assets. Takes an array of Blueprint paths and compiles each Blueprint, reporting compilation results including errors and warnings.")},
	};
	int32 Checked = 0;
	for (const auto& Tool : Expected)
	{
		const TSharedPtr<Calvorn::ITool> Found = Executor->FindTool(Tool.Name);
		if (!FCalvornToolkitBlueprintModule::GetProvidedToolNames().Contains(Tool.Name))
		{
			EXPECT_FALSE(Found.IsValid()) << U8(Tool.Name);
			continue;
		}
		ASSERT_TRUE(Found.IsValid()) << U8(Tool.Name);
		EXPECT_EQ(Found->GetMetadata(), Tool.Metadata);
		EXPECT_EQ(Found->GetDescription(), Tool.Description);
		// Only read tools carry a schema text of their own; clients get the core module's schemas.
		EXPECT_EQ(Found->GetSchema(), TEXT(""));
		++Checked;
	}
	EXPECT_GT(Checked, 0);

	// Every tool the executor lists has the core module's parameter schema and the Blueprint category.
	for (const Calvorn::FToolDescriptor& Descriptor : Executor->ListTools())
	{
		EXPECT_NE(Descriptor.SchemaJson, TEXT("{}")) << U8(Descriptor.Name);
		EXPECT_EQ(Descriptor.Category, TEXT("Blueprint")) << U8(Descriptor.Name);
	}
}

TEST_F(ToolSurfaceModule, ANameTheExecutorRefusesIsNeitherRecordedNorTakenBack)
{
	ASSERT_NE(FModuleManager::Get().LoadModule(TEXT("CalvornToolkit")), nullptr);
	const TSharedPtr<Calvorn::IToolExecutor> Executor = FCalvornToolkitModule::GetToolExecutor();
	const FString Taken = Calvorn::ToolInfo::ToolName_DeleteBlueprint;
	ASSERT_TRUE(FCalvornToolkitBlueprintModule::GetProvidedToolNames().Contains(Taken));
	const TSharedPtr<Calvorn::ITool> Holder = MakeShared<FRecordingTool>(TEXT(""), TEXT("Someone else's"), TEXT("{}"));
	ASSERT_TRUE(Executor->RegisterTool(Taken, Holder));

	FCalvornToolkitBlueprintModule Module;
	Module.StartupModule();
	EXPECT_FALSE(Module.GetRegisteredToolNames().Contains(Taken));
	EXPECT_EQ(Module.GetRegisteredToolNames().Num(), FCalvornToolkitBlueprintModule::GetProvidedToolNames().Num() - 1);
	// The module still holds its own adapter for the name.
	EXPECT_TRUE(Module.FindToolAdapter(Taken).IsValid());
	EXPECT_NE(Module.FindToolAdapter(Taken), Holder);
	Module.ShutdownModule();

	EXPECT_EQ(Executor->FindTool(Taken), Holder);
	EXPECT_EQ(Executor->GetToolNames().Num(), 1);
	EXPECT_FALSE(Module.FindToolAdapter(Taken).IsValid());
}

TEST_F(ToolSurfaceModule, ToolsAnswerThroughTheExecutor)
{
	ASSERT_NE(FModuleManager::Get().LoadModule(TEXT("CalvornToolkit")), nullptr);
	ASSERT_NE(FModuleManager::Get().LoadModule(TEXT("CalvornToolkit_Blueprint")), nullptr);
	const TSharedPtr<Calvorn::IToolExecutor> Executor = FCalvornToolkitModule::GetToolExecutor();

	const FToolResult BadJson = Executor->ExecuteCommand(FToolCommand(TEXT("1"), TEXT("delete_blueprint"), TEXT("{oops")));
	ASSERT_EQ(BadJson.GetErrorMessages().Num(), 2) << Describe(BadJson);
	EXPECT_EQ(BadJson.GetErrorMessages()[0], TEXT("Invalid JSON command"));

	const FToolResult NoPath = Executor->ExecuteCommand(FToolCommand(TEXT("2"), TEXT("delete_blueprint"), TEXT("{}")));
	ASSERT_EQ(NoPath.GetErrorMessages().Num(), 1) << Describe(NoPath);
	EXPECT_EQ(NoPath.GetErrorMessages()[0], TEXT("Missing required field 'path'"));
}

TEST_F(ToolSurfaceModule, AReadCallbackNamesItsOwnToolWhateverTheRequestSaid)
{
	ASSERT_NE(FModuleManager::Get().LoadModule(TEXT("CalvornToolkit")), nullptr);
	ASSERT_NE(FModuleManager::Get().LoadModule(TEXT("CalvornToolkit_Blueprint")), nullptr);
	const TArray<FString> ReadTools = FCalvornToolkitBlueprintModule::GetProvidedReadToolNames();
	for (const FString& ToolName : ReadTools)
	{
		SCOPED_TRACE(U8(ToolName));
		TSharedPtr<FJsonObject> Parameters = MakeShared<FJsonObject>();
		Parameters->SetStringField(Calvorn::ToolInfo::FieldName_ReadTool, TEXT("some_other_tool"));
		Parameters->SetStringField(Calvorn::ToolInfo::FieldName_Path, TEXT("/Game/Nowhere/BP_None"));
		FToolResult Result;
		FString Text;
		ASSERT_TRUE(Calvorn::FModificationReadRegistry::Get().ExecuteRead(ToolName, Parameters, Result, Text));
		EXPECT_EQ(Parameters->GetStringField(Calvorn::ToolInfo::FieldName_ReadTool), ToolName);
	}
}
