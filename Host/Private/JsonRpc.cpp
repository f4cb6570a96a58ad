#include "JsonRpc.h"

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Policies/CondensedJsonPrintPolicy.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace Calvorn::Host
{
	namespace
	{
		FJsonRpcMessage MakeInvalid(int32 Code, const FString& Message, const TSharedPtr<FJsonValue>& Id = nullptr)
		{
			FJsonRpcMessage Result;
			Result.Kind = FJsonRpcMessage::EKind::Invalid;
			Result.ErrorCode = Code;
			Result.ErrorMessage = Message;
			Result.Id = Id;
			return Result;
		}

		bool IsJsonWhitespace(char Char)
		{
			return Char == ' ' || Char == '\t' || Char == '\r' || Char == '\n';
		}

		/**
		 * Our reader accepts only an object or an array at the top, as the engine's does. A bare
		 * scalar is still JSON, though, and JSON-RPC answers it as an invalid request rather than a
		 * parse error; reading it inside brackets tells the two apart. Only failed lines pay for this.
		 */
		bool IsJsonScalar(std::string_view Line)
		{
			size_t First = 0;
			while (First < Line.size() && IsJsonWhitespace(Line[First]))
			{
				++First;
			}
			if (First == Line.size() || Line[First] == '{' || Line[First] == '[')
			{
				return false;
			}
			std::string Wrapped;
			Wrapped.reserve(Line.size() + 2);
			Wrapped += '[';
			Wrapped += Line;
			Wrapped += ']';
			TSharedPtr<FJsonValue> Ignored;
			return FJsonSerializer::Deserialize(TJsonReaderFactory<UTF8CHAR>::CreateFromView(Wrapped.data(), static_cast<int32>(Wrapped.size())), Ignored);
		}

		bool IsValidId(const TSharedPtr<FJsonValue>& Id)
		{
			return Id.IsValid() && (Id->Type == EJson::String || Id->Type == EJson::Number);
		}

		std::string ToUtf8Line(const FString& Text)
		{
			return FStringToUTF8(Text);
		}
	}

	TSharedPtr<FJsonValue> FindMemberExact(const FJsonObject& Object, const TCHAR* Name)
	{
		const FString Wanted(Name);
		for (const auto& Member : Object.Values)
		{
			if (Member.Key.Equals(Wanted, ESearchCase::CaseSensitive))
			{
				return Member.Value.IsValid() ? Member.Value : MakeShared<FJsonValueNull>();
			}
		}
		return nullptr;
	}

	FJsonRpcMessage ParseJsonRpcMessage(std::string_view Line)
	{
		if (Line.size() > static_cast<size_t>(MAX_int32))
		{
			return MakeInvalid(JsonRpcErrorCode::ParseError, TEXT("Parse error: the message is too large"));
		}

		TSharedPtr<FJsonValue> Root;
		const TSharedRef<TJsonReader<UTF8CHAR>> Reader = TJsonReaderFactory<UTF8CHAR>::CreateFromView(Line.data(), static_cast<int32>(Line.size()));
		if (!FJsonSerializer::Deserialize(Reader, Root, FJsonSerializer::EFlags::StoreNumbersAsStrings) || !Root.IsValid())
		{
			if (IsJsonScalar(Line))
			{
				return MakeInvalid(JsonRpcErrorCode::InvalidRequest, TEXT("Invalid Request: a message must be a JSON object"));
			}
			return MakeInvalid(JsonRpcErrorCode::ParseError, FString::Printf(TEXT("Parse error: %s"), *Reader->GetErrorMessage()));
		}

		if (Root->Type == EJson::Array)
		{
			// MCP dropped JSON-RPC batches in 2025-06-18: every message travels on its own line.
			return MakeInvalid(JsonRpcErrorCode::InvalidRequest, TEXT("Invalid Request: batches are not supported; send one message per line"));
		}

		const TSharedPtr<FJsonObject>* ObjectPtr = nullptr;
		if (!Root->TryGetObject(ObjectPtr) || !ObjectPtr->IsValid())
		{
			return MakeInvalid(JsonRpcErrorCode::InvalidRequest, TEXT("Invalid Request: a message must be a JSON object"));
		}
		const FJsonObject& Object = **ObjectPtr;

		// The id is read first, so that every later complaint can be addressed to the request it concerns.
		const TSharedPtr<FJsonValue> Id = FindMemberExact(Object, TEXT("id"));
		const bool bHasId = Id.IsValid();
		if (bHasId && !IsValidId(Id))
		{
			return MakeInvalid(JsonRpcErrorCode::InvalidRequest, TEXT("Invalid Request: \"id\" must be a string or a number"));
		}

		const TSharedPtr<FJsonValue> Version = FindMemberExact(Object, TEXT("jsonrpc"));
		FString VersionText;
		if (!Version.IsValid() || Version->Type != EJson::String || !Version->TryGetString(VersionText) || !VersionText.Equals(TEXT("2.0"), ESearchCase::CaseSensitive))
		{
			return MakeInvalid(JsonRpcErrorCode::InvalidRequest, TEXT("Invalid Request: \"jsonrpc\" must be \"2.0\""), Id);
		}

		const TSharedPtr<FJsonValue> Method = FindMemberExact(Object, TEXT("method"));
		if (!Method.IsValid())
		{
			if (bHasId && (FindMemberExact(Object, TEXT("result")).IsValid() || FindMemberExact(Object, TEXT("error")).IsValid()))
			{
				FJsonRpcMessage Response;
				Response.Kind = FJsonRpcMessage::EKind::Response;
				Response.Id = Id;
				return Response;
			}
			return MakeInvalid(JsonRpcErrorCode::InvalidRequest, TEXT("Invalid Request: \"method\" is missing"), Id);
		}
		FJsonRpcMessage Message;
		if (Method->Type != EJson::String || !Method->TryGetString(Message.Method))
		{
			return MakeInvalid(JsonRpcErrorCode::InvalidRequest, TEXT("Invalid Request: \"method\" must be a string"), Id);
		}

		// A null "params" is read as no params: some clients write every optional member.
		const TSharedPtr<FJsonValue> Params = FindMemberExact(Object, TEXT("params"));
		if (Params.IsValid() && Params->Type != EJson::Null)
		{
			if (Params->Type == EJson::Object)
			{
				Message.Params = Params->AsObject();
			}
			else if (Params->Type == EJson::Array)
			{
				Message.bParamsNotAnObject = true;
			}
			else
			{
				return MakeInvalid(JsonRpcErrorCode::InvalidRequest, TEXT("Invalid Request: \"params\" must be an object or an array"), Id);
			}
		}

		Message.Kind = bHasId ? FJsonRpcMessage::EKind::Request : FJsonRpcMessage::EKind::Notification;
		Message.Id = Id;
		return Message;
	}

	std::string SerializeJsonLine(const TSharedRef<FJsonObject>& Object)
	{
		FString Text;
		const TSharedRef<TJsonWriter<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>> Writer = TJsonWriterFactory<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>::Create(&Text);
		FJsonSerializer::Serialize(Object, Writer);
		return ToUtf8Line(Text);
	}

	namespace
	{
		TSharedRef<FJsonObject> MakeEnvelope(const TSharedPtr<FJsonValue>& Id)
		{
			TSharedRef<FJsonObject> Envelope = MakeShared<FJsonObject>();
			Envelope->SetStringField(TEXT("jsonrpc"), TEXT("2.0"));
			Envelope->SetField(TEXT("id"), IsValidId(Id) ? Id : MakeShared<FJsonValueNull>());
			return Envelope;
		}
	}

	std::string MakeJsonRpcResult(const TSharedPtr<FJsonValue>& Id, const TSharedRef<FJsonObject>& Result)
	{
		TSharedRef<FJsonObject> Envelope = MakeEnvelope(Id);
		Envelope->SetObjectField(TEXT("result"), Result);
		return SerializeJsonLine(Envelope);
	}

	std::string MakeJsonRpcError(const TSharedPtr<FJsonValue>& Id, int32 Code, const FString& Message)
	{
		TSharedRef<FJsonObject> Error = MakeShared<FJsonObject>();
		Error->SetNumberField(TEXT("code"), Code);
		Error->SetStringField(TEXT("message"), Message);
		TSharedRef<FJsonObject> Envelope = MakeEnvelope(Id);
		Envelope->SetObjectField(TEXT("error"), Error);
		return SerializeJsonLine(Envelope);
	}

	int64 FFileDescriptorSource::Read(char* Buffer, int64 Capacity)
	{
		for (;;)
		{
			if (IsStopRequested())
			{
				return 0;
			}
			const ssize_t Count = ::read(FileDescriptor, Buffer, static_cast<size_t>(Capacity));
			if (Count >= 0 || errno != EINTR)
			{
				return static_cast<int64>(Count);
			}
		}
	}

	bool FFileDescriptorSink::Write(std::string_view Bytes)
	{
		const char* Cursor = Bytes.data();
		size_t Left = Bytes.size();
		while (Left > 0)
		{
			const ssize_t Count = ::write(FileDescriptor, Cursor, Left);
			if (Count < 0)
			{
				if (errno == EINTR)
				{
					continue;
				}
				return false;
			}
			Cursor += Count;
			Left -= static_cast<size_t>(Count);
		}
		return true;
	}

	FLineReader::FLineReader(IByteSource& InSource, int64 InMaxLineBytes)
		: Source(InSource)
		, MaxLineBytes(InMaxLineBytes)
	{
	}

	bool FLineReader::Fill()
	{
		if (bAtEnd)
		{
			return false;
		}
		// Drop what was handed out already, so the buffer holds one partial line at most.
		if (Start > 0)
		{
			Buffer.erase(0, Start);
			Scanned -= Start;
			Start = 0;
		}
		constexpr size_t ChunkBytes = 64 * 1024;
		const size_t OldSize = Buffer.size();
		Buffer.resize(OldSize + ChunkBytes);
		const int64 Count = Source.Read(Buffer.data() + OldSize, static_cast<int64>(ChunkBytes));
		Buffer.resize(OldSize + static_cast<size_t>(Count > 0 ? Count : 0));
		if (Count <= 0)
		{
			bAtEnd = true;
			return false;
		}
		return true;
	}

	FLineReader::EStatus FLineReader::ReadLine(std::string_view& OutLine)
	{
		for (;;)
		{
			const size_t LineBreak = Buffer.find('\n', Scanned);
			if (LineBreak != std::string::npos)
			{
				const size_t LineStart = Start;
				Start = LineBreak + 1;
				Scanned = Start;
				if (bDiscarding)
				{
					// The tail of a line already reported as too long.
					bDiscarding = false;
					continue;
				}
				size_t LineEnd = LineBreak;
				if (LineEnd > LineStart && Buffer[LineEnd - 1] == '\r')
				{
					--LineEnd;
				}
				if (static_cast<int64>(LineEnd - LineStart) > MaxLineBytes)
				{
					return EStatus::TooLong;
				}
				OutLine = std::string_view(Buffer.data() + LineStart, LineEnd - LineStart);
				return EStatus::Line;
			}
			Scanned = Buffer.size();

			if (bDiscarding)
			{
				Buffer.clear();
				Start = 0;
				Scanned = 0;
			}
			else if (static_cast<int64>(Buffer.size() - Start) > MaxLineBytes)
			{
				// Forget the line so far; keep reading only to find where it ends.
				Buffer.clear();
				Start = 0;
				Scanned = 0;
				bDiscarding = true;
				return EStatus::TooLong;
			}

			if (!Fill())
			{
				if (Start < Buffer.size() && !bDiscarding)
				{
					// A last line without its line break.
					const size_t LineStart = Start;
					size_t LineEnd = Buffer.size();
					Start = Scanned = Buffer.size();
					if (LineEnd > LineStart && Buffer[LineEnd - 1] == '\r')
					{
						--LineEnd;
					}
					if (static_cast<int64>(LineEnd - LineStart) > MaxLineBytes)
					{
						return EStatus::TooLong;
					}
					OutLine = std::string_view(Buffer.data() + LineStart, LineEnd - LineStart);
					return EStatus::Line;
				}
				return EStatus::End;
			}
		}
	}
}
