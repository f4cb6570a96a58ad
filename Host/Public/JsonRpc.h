#pragma once

#include "CoreMinimal.h"

#include <csignal>
#include <string>
#include <string_view>

class FJsonObject;
class FJsonValue;

/**
 * JSON-RPC 2.0 as the MCP stdio transport carries it: one UTF-8 JSON message per line. This file
 * holds the framing (reading lines from a byte source, writing lines to a sink), the checks that
 * turn a line into a request or into the error it deserves, and the building of replies.
 */
namespace Calvorn::Host
{
	/** The error codes of JSON-RPC 2.0 that the server answers with. */
	namespace JsonRpcErrorCode
	{
		inline constexpr int32 ParseError = -32700;
		inline constexpr int32 InvalidRequest = -32600;
		inline constexpr int32 MethodNotFound = -32601;
		inline constexpr int32 InvalidParams = -32602;
		inline constexpr int32 InternalError = -32603;
	}

	/** One line from the client, checked against JSON-RPC 2.0. */
	struct FJsonRpcMessage
	{
		enum class EKind : uint8
		{
			/** A call that expects a reply: it has an id. */
			Request,
			/** A call without an id: never answered, not even with an error. */
			Notification,
			/** A reply from the client (the server sends no requests, so these are dropped). */
			Response,
			/** Not a valid message: answered with ErrorCode and ErrorMessage, to Id when it could be read. */
			Invalid,
		};

		EKind Kind = EKind::Invalid;

		/** A string or a number, given back to the client exactly as it came; null when unknown. */
		TSharedPtr<FJsonValue> Id;

		FString Method;

		/** The "params" object; null when the message has none. */
		TSharedPtr<FJsonObject> Params;

		/** "params" was present but is not an object (MCP methods take named parameters only). */
		bool bParamsNotAnObject = false;

		int32 ErrorCode = 0;
		FString ErrorMessage;
	};

	/**
	 * Reads one message. Text that is not JSON is a parse error; JSON that is not a request object
	 * (a scalar, a batch array, a wrong "jsonrpc", an id that is neither a string nor a number, a
	 * missing method) is an invalid request. Member names are compared exactly, as JSON-RPC spells them.
	 * Numbers are kept as their source text, so ids and tool arguments reach the other side unchanged.
	 */
	[[nodiscard]] FJsonRpcMessage ParseJsonRpcMessage(std::string_view Line);

	/** A member of an object looked up by its exact name (FJsonObject's own lookup ignores case). */
	[[nodiscard]] TSharedPtr<FJsonValue> FindMemberExact(const FJsonObject& Object, const TCHAR* Name);

	/** {"jsonrpc":"2.0","id":Id,"result":Result} on one line, UTF-8, without the line break. */
	[[nodiscard]] std::string MakeJsonRpcResult(const TSharedPtr<FJsonValue>& Id, const TSharedRef<FJsonObject>& Result);

	/** {"jsonrpc":"2.0","id":Id or null,"error":{"code","message"}} on one line, UTF-8, without the line break. */
	[[nodiscard]] std::string MakeJsonRpcError(const TSharedPtr<FJsonValue>& Id, int32 Code, const FString& Message);

	/** The object as one line of compact JSON, UTF-8. */
	[[nodiscard]] std::string SerializeJsonLine(const TSharedRef<FJsonObject>& Object);

	/** Where the server's input comes from. */
	class IByteSource
	{
	public:
		virtual ~IByteSource() = default;

		/** Reads up to Capacity bytes; returns how many, 0 at the end of the input, negative on a read error. */
		virtual int64 Read(char* Buffer, int64 Capacity) = 0;
	};

	/** Where the server's replies go. */
	class IByteSink
	{
	public:
		virtual ~IByteSink() = default;

		/** Writes every byte, then makes them visible to the reader; false when the reader is gone. */
		virtual bool Write(std::string_view Bytes) = 0;
	};

	/**
	 * A POSIX file descriptor as a source; retries interrupted reads. Given a stop flag (set by a
	 * signal handler), it ends the input instead once the flag is set, so a server told to stop by
	 * a signal leaves through its normal exit and cleans up after itself.
	 */
	class FFileDescriptorSource : public IByteSource
	{
	public:
		explicit FFileDescriptorSource(int32 InFileDescriptor, const volatile std::sig_atomic_t* InStopFlag = nullptr)
			: FileDescriptor(InFileDescriptor)
			, StopFlag(InStopFlag)
		{
		}

		virtual int64 Read(char* Buffer, int64 Capacity) override;

	private:
		bool IsStopRequested() const { return StopFlag && *StopFlag != 0; }

		int32 FileDescriptor;
		const volatile std::sig_atomic_t* StopFlag;
	};

	/** A POSIX file descriptor as a sink; retries interrupted and partial writes. */
	class FFileDescriptorSink : public IByteSink
	{
	public:
		explicit FFileDescriptorSink(int32 InFileDescriptor)
			: FileDescriptor(InFileDescriptor)
		{
		}

		virtual bool Write(std::string_view Bytes) override;

	private:
		int32 FileDescriptor;
	};

	/**
	 * Splits a byte stream into lines. A line ends at "\n"; a "\r" before it is dropped, so clients
	 * that write CRLF are understood. The last line may lack its line break. A line longer than the
	 * limit is not kept in memory: the reader reports it once as too long and skips to its end.
	 */
	class FLineReader
	{
	public:
		enum class EStatus : uint8
		{
			Line,
			TooLong,
			End,
		};

		/** 64 MiB: far above any real tool request, low enough that a runaway client cannot exhaust memory. */
		static constexpr int64 DefaultMaxLineBytes = 64ll * 1024 * 1024;

		explicit FLineReader(IByteSource& InSource, int64 InMaxLineBytes = DefaultMaxLineBytes);

		/** The next line in OutLine (valid until the next call), or TooLong, or End once the input is over. */
		EStatus ReadLine(std::string_view& OutLine);

	private:
		/** Appends what the source has; false at its end. */
		bool Fill();

		IByteSource& Source;
		int64 MaxLineBytes;
		std::string Buffer;
		/** Start of the unread part of Buffer. */
		size_t Start = 0;
		/** Where the search for the next "\n" resumes: everything before it in the unread part has been searched. */
		size_t Scanned = 0;
		bool bDiscarding = false;
		bool bAtEnd = false;
	};
}
