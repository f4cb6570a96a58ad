#pragma once

#include "CoreMinimal.h"
#include "JsonRpc.h"

#include <string>
#include <string_view>

class FJsonObject;

namespace Calvorn
{
	class IToolExecutor;
	struct FToolDescriptor;
}

namespace Calvorn::Host
{
	/** What the server tells a client about itself in its answer to initialize. */
	struct FMcpServerInfo
	{
		FString Name;
		FString Title;
		FString Version;
		/** Guidance a client may show its agent; left out when empty. */
		FString Instructions;
	};

	/**
	 * A Model Context Protocol server over one tool executor: initialize with version negotiation,
	 * ping, tools/list and tools/call. It answers one message at a time and keeps going whatever it
	 * is sent: a bad message gets a JSON-RPC error, a notification gets nothing.
	 *
	 * The server is written against lines in and lines out, so the same object serves standard
	 * input and output in the program and in-memory streams in tests.
	 */
	class FMcpServer
	{
	public:
		/** The protocol revision the server speaks when the client asks for one it does not know. */
		static constexpr const TCHAR* LatestProtocolVersion = TEXT("2025-06-18");

		/** The revisions the server can answer in, newest first. */
		[[nodiscard]] static const TArray<FString>& GetSupportedProtocolVersions();

		FMcpServer(const TSharedRef<IToolExecutor>& InExecutor, const FMcpServerInfo& InInfo);

		/**
		 * Handles one message (a line without its line break) and returns the reply line, or an
		 * empty string when none is due: notifications, replies from the client, blank lines.
		 */
		std::string HandleMessage(std::string_view Line);

		/** Handles the messages of Input one after the other until it ends or Output is closed. */
		void Serve(IByteSource& Input, IByteSink& Output, int64 MaxMessageBytes = FLineReader::DefaultMaxLineBytes);

		/** The revision agreed with the client; the latest one until initialize has been answered. */
		[[nodiscard]] const FString& GetProtocolVersion() const { return ProtocolVersion; }

		/** Whether the client has said it is ready (notifications/initialized). */
		[[nodiscard]] bool IsClientInitialized() const { return bClientInitialized; }

		/** The schema of the result object every tool call returns as structured content. */
		[[nodiscard]] static TSharedRef<FJsonObject> MakeToolResultSchema();

		/**
		 * A tool's input schema as MCP requires it: an object schema. A tool without parameters gives
		 * "{}" or nothing; that becomes {"type":"object"}, which accepts any object.
		 */
		[[nodiscard]] static TSharedRef<FJsonObject> MakeToolInputSchema(const FToolDescriptor& Tool);

	private:
		/** A method's answer: a result object, or a JSON-RPC error. */
		struct FOutcome
		{
			TSharedPtr<FJsonObject> Result;
			int32 ErrorCode = 0;
			FString ErrorMessage;

			static FOutcome Answer(const TSharedPtr<FJsonObject>& Result)
			{
				FOutcome Outcome;
				Outcome.Result = Result;
				return Outcome;
			}

			static FOutcome Error(int32 Code, const FString& Message)
			{
				FOutcome Outcome;
				Outcome.ErrorCode = Code;
				Outcome.ErrorMessage = Message;
				return Outcome;
			}
		};

		FOutcome Dispatch(const FJsonRpcMessage& Request);
		FOutcome HandleInitialize(const FJsonObject* Params);
		FOutcome HandleToolsList(const FJsonObject* Params) const;
		FOutcome HandleToolsCall(const FJsonRpcMessage& Request);
		void HandleNotification(const FJsonRpcMessage& Notification);

		/** Whether the agreed revision is at least Version (revisions are dates, so text order is time order). */
		bool SpeaksAtLeast(const TCHAR* Version) const;

		TSharedRef<IToolExecutor> Executor;
		FMcpServerInfo Info;
		FString ProtocolVersion;
		bool bClientInitialized = false;
	};
}
