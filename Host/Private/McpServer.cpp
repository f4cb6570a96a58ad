#include "McpServer.h"

#include "HostLog.h"
#include "IToolExecutor.h"
#include "ToolCommand.h"
#include "ToolResult.h"

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "HAL/PlatformTime.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"

namespace Calvorn::Host
{
	namespace
	{
		/** Revisions whose additions the server uses only when the client speaks them. */
		constexpr const TCHAR* ToolAnnotationsVersion = TEXT("2025-03-26");
		constexpr const TCHAR* StructuredContentVersion = TEXT("2025-06-18");

		TSharedPtr<FJsonObject> ParseJsonObject(const FString& Text)
		{
			TSharedPtr<FJsonObject> Object;
			if (Text.IsEmpty() || !FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::Create(Text), Object))
			{
				return nullptr;
			}
			return Object;
		}

		/** A read tool changes nothing, which lets a client run it without asking the user first. */
		TSharedPtr<FJsonObject> MakeAnnotations(const TSharedPtr<FJsonObject>& Metadata)
		{
			FString OperationType;
			if (!Metadata.IsValid() || !Metadata->TryGetStringField(TEXT("operation_type"), OperationType) || !OperationType.Equals(TEXT("read"), ESearchCase::CaseSensitive))
			{
				return nullptr;
			}
			TSharedRef<FJsonObject> Annotations = MakeShared<FJsonObject>();
			Annotations->SetBoolField(TEXT("readOnlyHint"), true);
			return Annotations;
		}

		FString IdToRequestId(const TSharedPtr<FJsonValue>& Id)
		{
			FString Text;
			if (Id.IsValid())
			{
				Id->TryGetString(Text);
			}
			return Text;
		}

		bool IsBlank(std::string_view Line)
		{
			for (const char Char : Line)
			{
				if (Char != ' ' && Char != '\t' && Char != '\r')
				{
					return false;
				}
			}
			return true;
		}

		constexpr const TCHAR* ToolResultSchemaText = TEXT(R"({
			"type": "object",
			"properties": {
				"success": {"type": "boolean", "description": "False when the call raised an error or a warning containing [Failure]."},
				"errors": {"type": "array", "items": {"type": "string"}, "description": "Failures that ended the call."},
				"warnings": {"type": "array", "items": {"type": "string"}, "description": "Failed items of a batch ([Failure] ...) and tolerated anomalies."},
				"messages": {"type": "array", "items": {"type": "string"}, "description": "The closing summary of a successful call."},
				"data": {"type": "object", "description": "What the tool reports; structured parts are often JSON text in string fields."},
				"read_backs": {
					"type": "array",
					"description": "Fresh reads of what the call changed.",
					"items": {
						"type": "object",
						"properties": {"tool": {"type": "string"}, "result": {}},
						"required": ["tool", "result"]
					}
				}
			},
			"required": ["success", "errors", "warnings", "messages", "data", "read_backs"]
		})");
	}

	const TArray<FString>& FMcpServer::GetSupportedProtocolVersions()
	{
		static const TArray<FString> Versions = {LatestProtocolVersion, TEXT("2025-03-26"), TEXT("2024-11-05")};
		return Versions;
	}

	TSharedRef<FJsonObject> FMcpServer::MakeToolResultSchema()
	{
		const TSharedPtr<FJsonObject> Schema = ParseJsonObject(ToolResultSchemaText);
		check(Schema.IsValid());
		return Schema.ToSharedRef();
	}

	TSharedRef<FJsonObject> FMcpServer::MakeToolInputSchema(const FToolDescriptor& Tool)
	{
		const TSharedPtr<FJsonObject> Parsed = ParseJsonObject(Tool.SchemaJson);
		TSharedRef<FJsonObject> Schema = MakeShared<FJsonObject>();
		Schema->SetStringField(TEXT("type"), TEXT("object"));
		if (!Parsed.IsValid())
		{
			if (!Tool.SchemaJson.IsEmpty())
			{
				HostLogWarning(FString::Printf(TEXT("tool '%s' has a parameter schema that is not a JSON object; clients see an open object schema"), *Tool.Name));
			}
			return Schema;
		}
		const TSharedPtr<FJsonValue> Type = FindMemberExact(*Parsed, TEXT("type"));
		if (!Type.IsValid())
		{
			for (const auto& Member : Parsed->Values)
			{
				Schema->SetField(Member.Key, Member.Value);
			}
			return Schema;
		}
		FString TypeText;
		if (Type->TryGetString(TypeText) && TypeText.Equals(TEXT("object"), ESearchCase::CaseSensitive))
		{
			return Parsed.ToSharedRef();
		}
		HostLogWarning(FString::Printf(TEXT("tool '%s' has a parameter schema whose type is not \"object\"; clients see an open object schema"), *Tool.Name));
		return Schema;
	}

	FMcpServer::FMcpServer(const TSharedRef<IToolExecutor>& InExecutor, const FMcpServerInfo& InInfo)
		: Executor(InExecutor)
		, Info(InInfo)
		, ProtocolVersion(LatestProtocolVersion)
	{
	}

	bool FMcpServer::SpeaksAtLeast(const TCHAR* Version) const
	{
		return ProtocolVersion.Compare(FString(Version)) >= 0;
	}

	std::string FMcpServer::HandleMessage(std::string_view Line)
	{
		if (IsBlank(Line))
		{
			return std::string();
		}
		const FJsonRpcMessage Message = ParseJsonRpcMessage(Line);
		switch (Message.Kind)
		{
		case FJsonRpcMessage::EKind::Invalid:
			HostLogWarning(Message.ErrorMessage);
			return MakeJsonRpcError(Message.Id, Message.ErrorCode, Message.ErrorMessage);
		case FJsonRpcMessage::EKind::Notification:
			HandleNotification(Message);
			return std::string();
		case FJsonRpcMessage::EKind::Response:
			HostLogVerbose(TEXT("ignored a reply from the client: this server sends no requests"));
			return std::string();
		case FJsonRpcMessage::EKind::Request:
			break;
		}

		const double StartSeconds = FPlatformTime::Seconds();
		const FOutcome Outcome = Dispatch(Message);
		HostLogVerbose(FString::Printf(TEXT("%s answered in %.3f ms"), *Message.Method, (FPlatformTime::Seconds() - StartSeconds) * 1000.0));
		if (Outcome.Result.IsValid())
		{
			return MakeJsonRpcResult(Message.Id, Outcome.Result.ToSharedRef());
		}
		HostLogWarning(FString::Printf(TEXT("%s: %s"), *Message.Method, *Outcome.ErrorMessage));
		return MakeJsonRpcError(Message.Id, Outcome.ErrorCode, Outcome.ErrorMessage);
	}

	void FMcpServer::Serve(IByteSource& Input, IByteSink& Output, int64 MaxMessageBytes)
	{
		FLineReader Reader(Input, MaxMessageBytes);
		for (;;)
		{
			std::string_view Line;
			std::string Reply;
			const FLineReader::EStatus Status = Reader.ReadLine(Line);
			if (Status == FLineReader::EStatus::End)
			{
				return;
			}
			if (Status == FLineReader::EStatus::TooLong)
			{
				const FString Message = FString::Printf(TEXT("Parse error: the message is longer than %lld bytes"), static_cast<long long>(MaxMessageBytes));
				HostLogWarning(Message);
				Reply = MakeJsonRpcError(nullptr, JsonRpcErrorCode::ParseError, Message);
			}
			else
			{
				Reply = HandleMessage(Line);
			}
			if (!Reply.empty())
			{
				Reply += '\n';
				if (!Output.Write(Reply))
				{
					HostLogDisplay(TEXT("the client closed its end of the output; stopping"));
					return;
				}
			}
		}
	}

	FMcpServer::FOutcome FMcpServer::Dispatch(const FJsonRpcMessage& Request)
	{
		if (Request.bParamsNotAnObject)
		{
			return FOutcome::Error(JsonRpcErrorCode::InvalidParams, TEXT("Invalid params: \"params\" must be an object"));
		}
		const FJsonObject* Params = Request.Params.Get();
		if (Request.Method.Equals(TEXT("initialize"), ESearchCase::CaseSensitive))
		{
			return HandleInitialize(Params);
		}
		if (Request.Method.Equals(TEXT("ping"), ESearchCase::CaseSensitive))
		{
			return FOutcome::Answer(MakeShared<FJsonObject>());
		}
		if (Request.Method.Equals(TEXT("tools/list"), ESearchCase::CaseSensitive))
		{
			return HandleToolsList(Params);
		}
		if (Request.Method.Equals(TEXT("tools/call"), ESearchCase::CaseSensitive))
		{
			return HandleToolsCall(Request);
		}
		return FOutcome::Error(JsonRpcErrorCode::MethodNotFound, FString::Printf(TEXT("Method not found: %s"), *Request.Method));
	}

	FMcpServer::FOutcome FMcpServer::HandleInitialize(const FJsonObject* Params)
	{
		const TSharedPtr<FJsonValue> Requested = Params ? FindMemberExact(*Params, TEXT("protocolVersion")) : nullptr;
		FString RequestedVersion;
		if (!Requested.IsValid() || Requested->Type != EJson::String || !Requested->TryGetString(RequestedVersion))
		{
			return FOutcome::Error(JsonRpcErrorCode::InvalidParams, TEXT("Invalid params: \"protocolVersion\" must be a string"));
		}

		// A client asking for a revision we do not speak gets ours, and decides whether it can go on.
		ProtocolVersion = LatestProtocolVersion;
		for (const FString& Supported : GetSupportedProtocolVersions())
		{
			if (Supported.Equals(RequestedVersion, ESearchCase::CaseSensitive))
			{
				ProtocolVersion = Supported;
				break;
			}
		}
		bClientInitialized = false;

		TSharedRef<FJsonObject> Tools = MakeShared<FJsonObject>();
		Tools->SetBoolField(TEXT("listChanged"), false);
		TSharedRef<FJsonObject> Capabilities = MakeShared<FJsonObject>();
		Capabilities->SetObjectField(TEXT("tools"), Tools);

		TSharedRef<FJsonObject> ServerInfo = MakeShared<FJsonObject>();
		ServerInfo->SetStringField(TEXT("name"), Info.Name);
		if (!Info.Title.IsEmpty() && SpeaksAtLeast(StructuredContentVersion))
		{
			ServerInfo->SetStringField(TEXT("title"), Info.Title);
		}
		ServerInfo->SetStringField(TEXT("version"), Info.Version);

		TSharedRef<FJsonObject> Result = MakeShared<FJsonObject>();
		Result->SetStringField(TEXT("protocolVersion"), ProtocolVersion);
		Result->SetObjectField(TEXT("capabilities"), Capabilities);
		Result->SetObjectField(TEXT("serverInfo"), ServerInfo);
		if (!Info.Instructions.IsEmpty())
		{
			Result->SetStringField(TEXT("instructions"), Info.Instructions);
		}
		HostLogDisplay(FString::Printf(TEXT("client asked for protocol %s; speaking %s"), *RequestedVersion, *ProtocolVersion));
		return FOutcome::Answer(Result);
	}

	FMcpServer::FOutcome FMcpServer::HandleToolsList(const FJsonObject* Params) const
	{
		// Every tool fits in one page, so no cursor was ever handed out and none can be valid.
		if (Params && FindMemberExact(*Params, TEXT("cursor")).IsValid())
		{
			return FOutcome::Error(JsonRpcErrorCode::InvalidParams, TEXT("Invalid params: unknown cursor (this server lists every tool in one page)"));
		}

		const bool bWithAnnotations = SpeaksAtLeast(ToolAnnotationsVersion);
		const bool bWithStructuredContent = SpeaksAtLeast(StructuredContentVersion);
		const TSharedPtr<FJsonObject> OutputSchema = bWithStructuredContent ? TSharedPtr<FJsonObject>(MakeToolResultSchema()) : nullptr;

		TArray<TSharedPtr<FJsonValue>> Tools;
		for (const FToolDescriptor& Descriptor : Executor->ListTools())
		{
			const TSharedPtr<FJsonObject> Metadata = ParseJsonObject(Descriptor.MetadataJson);
			TSharedRef<FJsonObject> Tool = MakeShared<FJsonObject>();
			Tool->SetStringField(TEXT("name"), Descriptor.Name);
			Tool->SetStringField(TEXT("description"), Descriptor.Description);
			Tool->SetObjectField(TEXT("inputSchema"), MakeToolInputSchema(Descriptor));
			if (bWithStructuredContent)
			{
				Tool->SetObjectField(TEXT("outputSchema"), OutputSchema);
			}
			if (bWithAnnotations)
			{
				if (const TSharedPtr<FJsonObject> Annotations = MakeAnnotations(Metadata))
				{
					Tool->SetObjectField(TEXT("annotations"), Annotations);
				}
			}
			if (bWithStructuredContent)
			{
				TSharedRef<FJsonObject> Meta = MakeShared<FJsonObject>();
				Meta->SetStringField(TEXT("calvorn/category"), Descriptor.Category);
				if (Metadata.IsValid())
				{
					Meta->SetObjectField(TEXT("calvorn/metadata"), Metadata);
				}
				Tool->SetObjectField(TEXT("_meta"), Meta);
			}
			Tools.Add(MakeShared<FJsonValueObject>(Tool));
		}

		TSharedRef<FJsonObject> Result = MakeShared<FJsonObject>();
		Result->SetArrayField(TEXT("tools"), MoveTemp(Tools));
		return FOutcome::Answer(Result);
	}

	FMcpServer::FOutcome FMcpServer::HandleToolsCall(const FJsonRpcMessage& Request)
	{
		const FJsonObject* Params = Request.Params.Get();
		const TSharedPtr<FJsonValue> Name = Params ? FindMemberExact(*Params, TEXT("name")) : nullptr;
		FString ToolName;
		if (!Name.IsValid() || Name->Type != EJson::String || !Name->TryGetString(ToolName))
		{
			return FOutcome::Error(JsonRpcErrorCode::InvalidParams, TEXT("Invalid params: \"name\" must be the name of a tool"));
		}

		FString ArgumentsJson = TEXT("{}");
		const TSharedPtr<FJsonValue> Arguments = FindMemberExact(*Params, TEXT("arguments"));
		if (Arguments.IsValid() && Arguments->Type != EJson::Null)
		{
			if (Arguments->Type != EJson::Object)
			{
				return FOutcome::Error(JsonRpcErrorCode::InvalidParams, TEXT("Invalid params: \"arguments\" must be an object"));
			}
			// The tools take their parameters as text; numbers were kept as written, so nothing is rounded on the way.
			ArgumentsJson = UTF8ToFString(SerializeJsonLine(Arguments->AsObject().ToSharedRef()));
		}

		const FToolResult ToolResult = Executor->ExecuteCommand(FToolCommand(IdToRequestId(Request.Id), ToolName, ArgumentsJson));
		const TSharedRef<FJsonObject> ResultJson = ToolResult.ToJson();
		bool bSuccess = false;
		ResultJson->TryGetBoolField(TEXT("success"), bSuccess);

		TSharedRef<FJsonObject> Text = MakeShared<FJsonObject>();
		Text->SetStringField(TEXT("type"), TEXT("text"));
		Text->SetStringField(TEXT("text"), UTF8ToFString(SerializeJsonLine(ResultJson)));

		TSharedRef<FJsonObject> Result = MakeShared<FJsonObject>();
		Result->SetArrayField(TEXT("content"), TArray<TSharedPtr<FJsonValue>>{MakeShared<FJsonValueObject>(Text)});
		if (SpeaksAtLeast(StructuredContentVersion))
		{
			Result->SetObjectField(TEXT("structuredContent"), ResultJson);
		}
		Result->SetBoolField(TEXT("isError"), !bSuccess);
		HostLogVerbose(FString::Printf(TEXT("tools/call %s: %s"), *ToolName, bSuccess ? TEXT("succeeded") : TEXT("failed")));
		return FOutcome::Answer(Result);
	}

	void FMcpServer::HandleNotification(const FJsonRpcMessage& Notification)
	{
		if (Notification.Method.Equals(TEXT("notifications/initialized"), ESearchCase::CaseSensitive))
		{
			bClientInitialized = true;
			return;
		}
		// Calls run to completion before the next line is read, so a cancellation always arrives
		// after the call it names has been answered; there is nothing left to stop.
		HostLogVerbose(FString::Printf(TEXT("ignored notification %s"), *Notification.Method));
	}
}
