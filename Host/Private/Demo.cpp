#include "Demo.h"

#include "HostCommands.h"
#include "McpServer.h"

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Misc/PackageName.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"

namespace Calvorn::Host
{
	namespace
	{
		/** Long descriptions are cut for the demo's one-line-per-tool listing. */
		constexpr int32 MaxDescriptionChars = 100;

		FString JoinStrings(const TArray<TSharedPtr<FJsonValue>>* Values)
		{
			if (!Values || Values->Num() == 0)
			{
				return TEXT("none");
			}
			TArray<FString> Texts;
			for (const TSharedPtr<FJsonValue>& Value : *Values)
			{
				FString Text;
				Texts.Add(Value.IsValid() && Value->TryGetString(Text) ? FString::Printf(TEXT("\"%s\""), *Text) : FString(TEXT("?")));
			}
			return FString::Join(Texts, TEXT(", "));
		}

		/** One step of the script: the line sent, and how to tell the reader what came back. */
		struct FDemoStep
		{
			FString Request;
			/** Describes the reply (null for a notification); false when it is not what the protocol requires. */
			TFunction<bool(const TSharedPtr<FJsonObject>& Reply, FString& OutEssence)> Describe;
		};

		bool DescribeError(const TSharedPtr<FJsonObject>& Reply, FString& OutEssence)
		{
			const TSharedPtr<FJsonObject>* Error = nullptr;
			double Code = 0;
			FString Message;
			if (!Reply.IsValid() || !Reply->TryGetObjectField(TEXT("error"), Error) || !(*Error)->TryGetNumberField(TEXT("code"), Code) || !(*Error)->TryGetStringField(TEXT("message"), Message))
			{
				OutEssence = TEXT("no JSON-RPC error came back");
				return false;
			}
			OutEssence = FString::Printf(TEXT("JSON-RPC error %d: %s (the server keeps running)"), static_cast<int32>(Code), *Message);
			return true;
		}

		const FJsonObject* GetResult(const TSharedPtr<FJsonObject>& Reply, FString& OutEssence)
		{
			const TSharedPtr<FJsonObject>* Result = nullptr;
			if (Reply.IsValid() && Reply->TryGetObjectField(TEXT("result"), Result))
			{
				return Result->Get();
			}
			FString Unused;
			OutEssence = DescribeError(Reply, Unused) ? FString::Printf(TEXT("unexpected error: %s"), *Unused) : FString(TEXT("no answer"));
			return nullptr;
		}

		bool DescribeInitialize(const TSharedPtr<FJsonObject>& Reply, FString& OutEssence)
		{
			const FJsonObject* Result = GetResult(Reply, OutEssence);
			const TSharedPtr<FJsonObject>* ServerInfo = nullptr;
			FString Version;
			FString Name;
			FString ServerVersion;
			if (!Result || !Result->TryGetStringField(TEXT("protocolVersion"), Version) || !Result->TryGetObjectField(TEXT("serverInfo"), ServerInfo)
				|| !(*ServerInfo)->TryGetStringField(TEXT("name"), Name) || !(*ServerInfo)->TryGetStringField(TEXT("version"), ServerVersion))
			{
				OutEssence = Result ? FString(TEXT("initialize answered without protocolVersion or serverInfo")) : OutEssence;
				return false;
			}
			const TSharedPtr<FJsonObject>* Capabilities = nullptr;
			const bool bTools = Result->TryGetObjectField(TEXT("capabilities"), Capabilities) && (*Capabilities)->HasField(TEXT("tools"));
			OutEssence = FString::Printf(TEXT("server %s %s speaks MCP %s; capabilities: %s"), *Name, *ServerVersion, *Version, bTools ? TEXT("tools") : TEXT("none"));
			return bTools;
		}

		bool DescribeToolsList(const TSharedPtr<FJsonObject>& Reply, FString& OutEssence, TSet<FString>& OutToolNames)
		{
			const FJsonObject* Result = GetResult(Reply, OutEssence);
			const TArray<TSharedPtr<FJsonValue>>* Tools = nullptr;
			if (!Result || !Result->TryGetArrayField(TEXT("tools"), Tools))
			{
				OutEssence = Result ? FString(TEXT("tools/list answered without a tools array")) : OutEssence;
				return false;
			}
			if (Tools->Num() == 0)
			{
				OutEssence = TEXT("0 tools. None is registered in this build yet: the Blueprint tools join as their operations are implemented.");
				return true;
			}
			OutEssence = FString::Printf(TEXT("%d tool%s:"), Tools->Num(), Tools->Num() == 1 ? TEXT("") : TEXT("s"));
			for (const TSharedPtr<FJsonValue>& Value : *Tools)
			{
				const TSharedPtr<FJsonObject>* Tool = nullptr;
				FString Name;
				FString Description;
				if (!Value->TryGetObject(Tool) || !(*Tool)->TryGetStringField(TEXT("name"), Name) || !(*Tool)->HasTypedField<EJson::Object>(TEXT("inputSchema")))
				{
					OutEssence += TEXT("\n    (a tool without a name or an input schema)");
					return false;
				}
				OutToolNames.Add(Name);
				(*Tool)->TryGetStringField(TEXT("description"), Description);
				if (Description.Len() > MaxDescriptionChars)
				{
					Description = Description.Left(MaxDescriptionChars - 3) + TEXT("...");
				}
				OutEssence += FString::Printf(TEXT("\n    %s: %s"), *Name, *Description);
			}
			return true;
		}

		bool DescribeToolCall(const TSharedPtr<FJsonObject>& Reply, FString& OutEssence)
		{
			const FJsonObject* Result = GetResult(Reply, OutEssence);
			if (!Result)
			{
				return false;
			}
			OutEssence = SummarizeToolCallResult(*Result);
			return Result->HasTypedField<EJson::Boolean>(TEXT("isError")) && Result->HasTypedField<EJson::Array>(TEXT("content"));
		}

		/** A call that the demo expects to succeed: the protocol's shape and no error. */
		bool DescribeSuccessfulToolCall(const TSharedPtr<FJsonObject>& Reply, FString& OutEssence)
		{
			bool bIsError = true;
			const FJsonObject* Result = DescribeToolCall(Reply, OutEssence) ? GetResult(Reply, OutEssence) : nullptr;
			return Result && Result->TryGetBoolField(TEXT("isError"), bIsError) && !bIsError;
		}

		FString ToolCallRequest(int32 Id, const TCHAR* ToolName, const FString& Arguments)
		{
			return FString::Printf(TEXT("{\"jsonrpc\":\"2.0\",\"id\":%d,\"method\":\"tools/call\",\"params\":{\"name\":\"%s\",\"arguments\":%s}}"), Id, ToolName, *Arguments);
		}

		/** A package name under /Game/CalvornDemo that no asset uses yet, so the demo never touches a user's asset. */
		FString FreeDemoAssetPath()
		{
			FString Path = TEXT("/Game/CalvornDemo/BP_DemoDoor");
			for (int32 Suffix = 2; FPackageName::DoesPackageExist(Path) && Suffix < 1000; ++Suffix)
			{
				Path = FString::Printf(TEXT("/Game/CalvornDemo/BP_DemoDoor_%d"), Suffix);
			}
			return Path;
		}

		/**
		 * The Blueprint part of the script, for the tools this build has: create an actor Blueprint, give it a
		 * function and an event dispatcher, compile it, read the function back, and delete the asset again.
		 */
		TArray<FDemoStep> MakeBlueprintSteps(const TSet<FString>& ToolNames)
		{
			TArray<FDemoStep> Steps;
			if (!ToolNames.Contains(TEXT("bp_create_asset")))
			{
				return Steps;
			}
			const FString Path = FreeDemoAssetPath();
			int32 Id = 10;
			Steps.Add({ToolCallRequest(Id++, TEXT("bp_create_asset"), FString::Printf(TEXT("{\"path\":\"%s\",\"blueprint_parent_class\":{\"type\":\"native\",\"parent_path\":\"/Script/Engine.Actor\"}}"), *Path)), &DescribeSuccessfulToolCall});
			if (ToolNames.Contains(TEXT("bp_create_graph")))
			{
				Steps.Add({ToolCallRequest(Id++, TEXT("bp_create_graph"), FString::Printf(TEXT("{\"path\":\"%s\",\"functions\":[")
					TEXT("{\"name\":\"OpenDoor\",\"parameters\":[{\"name\":\"Speed\",\"type\":{\"category\":\"float\"}}],\"return_type\":{\"category\":\"bool\"}},")
					TEXT("{\"name\":\"OnDoorOpened\",\"is_delegate\":true,\"parameters\":[{\"name\":\"Opener\",\"type\":{\"category\":\"object\",\"sub_category_object\":\"/Script/Engine.Actor\"}}]}]}"), *Path)),
					&DescribeSuccessfulToolCall});
			}
			if (ToolNames.Contains(TEXT("bp_populate_graph")))
			{
				// BeginPlay prints a greeting: one event reused from the new Blueprint, one exact call, one node found
				// by its menu title, wired through the schema.
				Steps.Add({ToolCallRequest(Id++, TEXT("bp_populate_graph"), FString::Printf(TEXT("{\"path\":\"%s\",\"graph_name\":\"EventGraph\",\"nodes\":[")
					TEXT("{\"node_guid\":\"Begin\",\"class_name\":\"K2Node_Event\",\"node_metadata\":{\"event_name\":\"ReceiveBeginPlay\"}},")
					TEXT("{\"node_guid\":\"Hello\",\"class_name\":\"K2Node_CallFunction\",\"target_class\":\"KismetSystemLibrary\",\"target_function\":\"PrintString\",")
					TEXT("\"pins\":[{\"name\":\"InString\",\"action\":\"modify\",\"value\":\"The door is ready\"}]},")
					TEXT("{\"node_guid\":\"Where\",\"menu_title\":\"Get Actor Location\"}],")
					TEXT("\"connections\":[{\"action\":\"add\",\"source_node_guid\":\"Begin\",\"source_pin_name\":\"then\",\"target_node_guid\":\"Hello\",\"target_pin_name\":\"execute\"}]}"), *Path)),
					&DescribeSuccessfulToolCall});
			}
			if (ToolNames.Contains(TEXT("compile_blueprint")))
			{
				Steps.Add({ToolCallRequest(Id++, TEXT("compile_blueprint"), FString::Printf(TEXT("{\"blueprint_paths\":[\"%s\"]}"), *Path)), &DescribeSuccessfulToolCall});
			}
			if (ToolNames.Contains(TEXT("read_blueprint_function")))
			{
				Steps.Add({ToolCallRequest(Id++, TEXT("read_blueprint_function"), FString::Printf(TEXT("{\"path\":\"%s\",\"function_name\":\"OpenDoor\"}"), *Path)), &DescribeSuccessfulToolCall});
			}
			if (ToolNames.Contains(TEXT("delete_blueprint")))
			{
				Steps.Add({ToolCallRequest(Id++, TEXT("delete_blueprint"), FString::Printf(TEXT("{\"path\":\"%s\"}"), *Path)), &DescribeSuccessfulToolCall});
			}
			return Steps;
		}

		bool DescribeUnknownToolCall(const TSharedPtr<FJsonObject>& Reply, FString& OutEssence)
		{
			bool bIsError = false;
			const FJsonObject* Result = DescribeToolCall(Reply, OutEssence) ? GetResult(Reply, OutEssence) : nullptr;
			return Result && Result->TryGetBoolField(TEXT("isError"), bIsError) && bIsError;
		}

		bool DescribePing(const TSharedPtr<FJsonObject>& Reply, FString& OutEssence)
		{
			const FJsonObject* Result = GetResult(Reply, OutEssence);
			if (!Result)
			{
				return false;
			}
			OutEssence = TEXT("pong (an empty result)");
			return Result->Values.Num() == 0;
		}

		TSharedPtr<FJsonObject> ParseReply(const std::string& Line)
		{
			TSharedPtr<FJsonObject> Reply;
			if (Line.empty() || !FJsonSerializer::Deserialize(TJsonReaderFactory<UTF8CHAR>::CreateFromView(Line.data(), static_cast<int32>(Line.size())), Reply))
			{
				return nullptr;
			}
			return Reply;
		}
	}

	FString SummarizeToolCallResult(const FJsonObject& CallResult)
	{
		bool bIsError = false;
		CallResult.TryGetBoolField(TEXT("isError"), bIsError);

		// The structured result when the client speaks a revision that has it, else the text content.
		TSharedPtr<FJsonObject> ToolResult;
		const TSharedPtr<FJsonObject>* Structured = nullptr;
		const TArray<TSharedPtr<FJsonValue>>* Content = nullptr;
		if (CallResult.TryGetObjectField(TEXT("structuredContent"), Structured))
		{
			ToolResult = *Structured;
		}
		else if (CallResult.TryGetArrayField(TEXT("content"), Content) && Content->Num() > 0 && (*Content)[0]->Type == EJson::Object)
		{
			FString Text;
			if ((*Content)[0]->AsObject()->TryGetStringField(TEXT("text"), Text))
			{
				FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::Create(Text), ToolResult);
			}
		}
		if (!ToolResult.IsValid())
		{
			return FString::Printf(TEXT("isError: %s; no readable result"), bIsError ? TEXT("true") : TEXT("false"));
		}

		const TArray<TSharedPtr<FJsonValue>>* Errors = nullptr;
		const TArray<TSharedPtr<FJsonValue>>* Warnings = nullptr;
		const TArray<TSharedPtr<FJsonValue>>* Messages = nullptr;
		const TArray<TSharedPtr<FJsonValue>>* ReadBacks = nullptr;
		const TSharedPtr<FJsonObject>* Data = nullptr;
		ToolResult->TryGetArrayField(TEXT("errors"), Errors);
		ToolResult->TryGetArrayField(TEXT("warnings"), Warnings);
		ToolResult->TryGetArrayField(TEXT("messages"), Messages);
		ToolResult->TryGetArrayField(TEXT("read_backs"), ReadBacks);
		TArray<FString> DataKeys;
		if (ToolResult->TryGetObjectField(TEXT("data"), Data))
		{
			for (const auto& Member : (*Data)->Values)
			{
				DataKeys.Add(Member.Key);
			}
		}
		return FString::Printf(TEXT("isError: %s; errors: %s; warnings: %s; messages: %s; data: {%s}; read-backs: %d"),
			bIsError ? TEXT("true") : TEXT("false"), *JoinStrings(Errors), *JoinStrings(Warnings), *JoinStrings(Messages),
			*FString::Join(DataKeys, TEXT(", ")), ReadBacks ? ReadBacks->Num() : 0);
	}

	bool RunDemoSession(FMcpServer& Server, TFunctionRef<void(const FString&)> PrintLine)
	{
		const FString ClientInfo = FString::Printf(TEXT("{\"name\":\"%s-demo\",\"version\":\"%s\"}"), HostProgramName, HostVersion);
		TSet<FString> ToolNames;
		TArray<FDemoStep> Steps;
		Steps.Add({FString::Printf(TEXT("{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"initialize\",\"params\":{\"protocolVersion\":\"%s\",\"capabilities\":{},\"clientInfo\":%s}}"), FMcpServer::LatestProtocolVersion, *ClientInfo), &DescribeInitialize});
		Steps.Add({TEXT("{\"jsonrpc\":\"2.0\",\"method\":\"notifications/initialized\"}"), nullptr});
		Steps.Add({TEXT("{\"jsonrpc\":\"2.0\",\"id\":2,\"method\":\"tools/list\"}"),
			[&ToolNames](const TSharedPtr<FJsonObject>& Reply, FString& OutEssence) { return DescribeToolsList(Reply, OutEssence, ToolNames); }});
		const int32 BlueprintStepsAt = Steps.Num();
		Steps.Add({TEXT("{\"jsonrpc\":\"2.0\",\"id\":3,\"method\":\"tools/call\",\"params\":{\"name\":\"no_such_tool\",\"arguments\":{}}}"), &DescribeUnknownToolCall});
		Steps.Add({TEXT("{\"jsonrpc\":\"2.0\",\"id\":4,\"method\":\"ping\"}"), &DescribePing});
		Steps.Add({TEXT("{\"jsonrpc\":\"2.0\",\"id\":5,\"method\":\"tools/call\","), &DescribeError});

		bool bAllAsExpected = true;
		for (int32 StepIndex = 0; StepIndex < Steps.Num(); ++StepIndex)
		{
			// Once the server has said which tools it has, the Blueprint part joins the script.
			if (StepIndex == BlueprintStepsAt)
			{
				Steps.Insert(MakeBlueprintSteps(ToolNames), StepIndex);
			}
			const FDemoStep& Step = Steps[StepIndex];
			PrintLine(FString::Printf(TEXT("> %s"), *Step.Request));
			const std::string Reply = Server.HandleMessage(FStringToUTF8(Step.Request));
			FString Essence;
			bool bAsExpected = true;
			if (!Step.Describe)
			{
				bAsExpected = Reply.empty();
				Essence = bAsExpected ? TEXT("(a notification: no answer)") : TEXT("a notification was answered");
			}
			else
			{
				bAsExpected = Step.Describe(ParseReply(Reply), Essence);
			}
			PrintLine(FString::Printf(TEXT("< %s%s"), *Essence, bAsExpected ? TEXT("") : TEXT("  [UNEXPECTED]")));
			bAllAsExpected &= bAsExpected;
		}
		return bAllAsExpected;
	}
}
