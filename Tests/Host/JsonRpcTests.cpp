#include "HostTestSupport.h"
#include "JsonRpc.h"

#include <algorithm>
#include <vector>

using namespace Calvorn::Host;
using namespace HostTests;

namespace
{
	using EKind = FJsonRpcMessage::EKind;

	std::string IdText(const TSharedPtr<FJsonValue>& Id)
	{
		if (!Id.IsValid())
		{
			return "none";
		}
		TSharedRef<FJsonObject> Holder = MakeShared<FJsonObject>();
		Holder->SetField(TEXT("id"), Id);
		const std::string Line = SerializeJsonLine(Holder);
		return Line.substr(6, Line.size() - 7);
	}

	struct FParseCase
	{
		std::string Line;
		EKind Kind;
		int32 ErrorCode;
		std::string Id;
	};

	TEST(JsonRpcParse, ClassifiesEveryKindOfLine)
	{
		const std::string Deep = std::string(600, '[') + std::string(600, ']');
		const FParseCase Cases[] = {
			{R"({"jsonrpc":"2.0","id":1,"method":"ping"})", EKind::Request, 0, "1"},
			{R"({"jsonrpc":"2.0","id":"a-1","method":"ping","params":{}})", EKind::Request, 0, R"("a-1")"},
			{R"({"jsonrpc":"2.0","id":1.50,"method":"ping"})", EKind::Request, 0, "1.50"},
			{R"({"jsonrpc":"2.0","id":-12345678901234567890,"method":"ping"})", EKind::Request, 0, "-12345678901234567890"},
			{R"({"method":"ping","id":0,"jsonrpc":"2.0"})", EKind::Request, 0, "0"},
			{R"({"jsonrpc":"2.0","method":"notifications/initialized"})", EKind::Notification, 0, "none"},
			{R"({"jsonrpc":"2.0","id":3,"result":{}})", EKind::Response, 0, "3"},
			{R"({"jsonrpc":"2.0","id":3,"error":{"code":1,"message":"x"}})", EKind::Response, 0, "3"},
			{R"({not json)", EKind::Invalid, JsonRpcErrorCode::ParseError, "none"},
			{R"({"jsonrpc":"2.0","id":1,"method":"ping"} trailing)", EKind::Invalid, JsonRpcErrorCode::ParseError, "none"},
			{"{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"p\xff\"}", EKind::Invalid, JsonRpcErrorCode::ParseError, "none"},
			{Deep, EKind::Invalid, JsonRpcErrorCode::ParseError, "none"},
			{"nul", EKind::Invalid, JsonRpcErrorCode::ParseError, "none"},
			{"42", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "none"},
			{R"("ping")", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "none"},
			{"null", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "none"},
			{"[]", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "none"},
			{R"([{"jsonrpc":"2.0","id":1,"method":"ping"}])", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "none"},
			{R"({"id":1,"method":"ping"})", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "1"},
			{R"({"jsonrpc":"1.0","id":1,"method":"ping"})", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "1"},
			{R"({"jsonrpc":2.0,"id":1,"method":"ping"})", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "1"},
			{R"({"jsonrpc":"2.0","id":{},"method":"ping"})", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "none"},
			{R"({"jsonrpc":"2.0","id":null,"method":"ping"})", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "none"},
			{R"({"jsonrpc":"2.0","id":true,"method":"ping"})", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "none"},
			{R"({"jsonrpc":"2.0","id":7})", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "7"},
			{R"({"jsonrpc":"2.0","id":7,"method":5})", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "7"},
			{R"({"jsonrpc":"2.0","id":7,"method":"ping","params":"x"})", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "7"},
			{R"({"jsonrpc":"2.0","id":7,"method":"ping","params":null})", EKind::Request, 0, "7"},
			{R"({"jsonrpc":"2.0","id":7,"method":"ping","params":true})", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "7"},
			// Member names are exact: a server that matched these would accept what no client sends.
			{R"({"JSONRPC":"2.0","id":7,"method":"ping"})", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "7"},
			{R"({"jsonrpc":"2.0","ID":7,"method":"ping"})", EKind::Notification, 0, "none"},
			{R"({"jsonrpc":"2.0","id":7,"Method":"ping"})", EKind::Invalid, JsonRpcErrorCode::InvalidRequest, "7"},
		};
		for (const FParseCase& Case : Cases)
		{
			const FJsonRpcMessage Message = ParseJsonRpcMessage(Case.Line);
			EXPECT_EQ(Message.Kind, Case.Kind) << Case.Line;
			EXPECT_EQ(Message.ErrorCode, Case.ErrorCode) << Case.Line << ": " << U8(Message.ErrorMessage);
			EXPECT_EQ(IdText(Message.Id), Case.Id) << Case.Line;
		}
	}

	TEST(JsonRpcParse, KeepsTheMethodAndTheParamsObject)
	{
		// More digits than a double holds: kept as its text, the number reaches a tool unchanged.
		const FJsonRpcMessage Message = ParseJsonRpcMessage(R"({"jsonrpc":"2.0","id":2,"method":"tools/call","params":{"name":"x","arguments":{"n":12345678901234567890123}}})");
		ASSERT_EQ(Message.Kind, EKind::Request);
		EXPECT_EQ(U8(Message.Method), "tools/call");
		ASSERT_TRUE(Message.Params.IsValid());
		EXPECT_EQ(ToLine(Message.Params), R"({"name":"x","arguments":{"n":12345678901234567890123}})");
		EXPECT_FALSE(Message.bParamsNotAnObject);

		const FJsonRpcMessage Positional = ParseJsonRpcMessage(R"({"jsonrpc":"2.0","id":2,"method":"ping","params":[1,2]})");
		EXPECT_EQ(Positional.Kind, EKind::Request);
		EXPECT_TRUE(Positional.bParamsNotAnObject);
		EXPECT_FALSE(Positional.Params.IsValid());
	}

	TEST(JsonRpcParse, ParseErrorsSayWhere)
	{
		const FJsonRpcMessage Message = ParseJsonRpcMessage("{\"a\":}");
		EXPECT_EQ(Message.ErrorCode, JsonRpcErrorCode::ParseError);
		EXPECT_EQ(U8(Message.ErrorMessage).rfind("Parse error: ", 0), 0u) << U8(Message.ErrorMessage);
		EXPECT_NE(U8(Message.ErrorMessage).find("Line: 1"), std::string::npos) << U8(Message.ErrorMessage);
	}

	TEST(JsonRpcReplies, AreOneLineOfExactJson)
	{
		EXPECT_EQ(MakeJsonRpcError(nullptr, JsonRpcErrorCode::ParseError, TEXT("Parse error: x")),
			R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700,"message":"Parse error: x"}})");
		EXPECT_EQ(MakeJsonRpcError(MakeShared<FJsonValueNumberString>(TEXT("7")), JsonRpcErrorCode::MethodNotFound, TEXT("a\nb \"c\" \u00e9")),
			"{\"jsonrpc\":\"2.0\",\"id\":7,\"error\":{\"code\":-32601,\"message\":\"a\\nb \\\"c\\\" \xc3\xa9\"}}");
		EXPECT_EQ(MakeJsonRpcResult(MakeShared<FJsonValueString>(TEXT("abc")), MakeShared<FJsonObject>()), R"({"jsonrpc":"2.0","id":"abc","result":{}})");
		// An id the request could not carry is answered as null, never as something invented.
		EXPECT_EQ(MakeJsonRpcResult(MakeShared<FJsonValueBoolean>(true), MakeShared<FJsonObject>()), R"({"jsonrpc":"2.0","id":null,"result":{}})");
	}

	/** Hands out its bytes a few at a time, as a pipe does. */
	class FChunkedSource : public IByteSource
	{
	public:
		FChunkedSource(std::string InData, size_t InChunk)
			: Data(MoveTemp(InData))
			, Chunk(InChunk)
		{
		}

		virtual int64 Read(char* Buffer, int64 Capacity) override
		{
			if (bFailAtEnd && Offset == Data.size())
			{
				return -1;
			}
			const size_t Count = std::min({Chunk, static_cast<size_t>(Capacity), Data.size() - Offset});
			std::copy_n(Data.data() + Offset, Count, Buffer);
			Offset += Count;
			return static_cast<int64>(Count);
		}

		bool bFailAtEnd = false;

	private:
		std::string Data;
		size_t Chunk;
		size_t Offset = 0;
	};

	std::vector<std::string> ReadAll(FLineReader& Reader)
	{
		std::vector<std::string> Out;
		for (;;)
		{
			std::string_view Line;
			const FLineReader::EStatus Status = Reader.ReadLine(Line);
			if (Status == FLineReader::EStatus::End)
			{
				return Out;
			}
			Out.push_back(Status == FLineReader::EStatus::TooLong ? std::string("<too long>") : std::string(Line));
		}
	}

	TEST(LineReader, SplitsLinesWhateverTheChunks)
	{
		for (const size_t Chunk : {size_t(1), size_t(2), size_t(3), size_t(7), size_t(1) << 20})
		{
			FChunkedSource Source("a\nbb\r\n\n{\"x\":\"\xc3\xa9\"}\r\nlast", Chunk);
			FLineReader Reader(Source);
			EXPECT_EQ(ReadAll(Reader), (std::vector<std::string>{"a", "bb", "", "{\"x\":\"\xc3\xa9\"}", "last"})) << "chunk " << Chunk;
		}
	}

	TEST(LineReader, SkipsOverlongLinesAndGoesOn)
	{
		const std::string Long(20, 'x');
		const struct
		{
			std::string Input;
			std::vector<std::string> Expected;
		} Cases[] = {
			{"short\n" + Long + "\nafter\n", {"short", "<too long>", "after"}},
			{Long + "\r\n" + Long + "\n12345678\n", {"<too long>", "<too long>", "12345678"}},
			{"12345678\n123456789\n", {"12345678", "<too long>"}},
			{Long, {"<too long>"}},
			{"", {}},
		};
		for (const auto& Case : Cases)
		{
			for (const size_t Chunk : {size_t(1), size_t(5), size_t(64)})
			{
				FChunkedSource Source(Case.Input, Chunk);
				FLineReader Reader(Source, 8);
				EXPECT_EQ(ReadAll(Reader), Case.Expected) << Case.Input << " in chunks of " << Chunk;
			}
		}
	}

	TEST(LineReader, AReadErrorEndsTheInputAfterWhatWasRead)
	{
		FChunkedSource Source("one\ntwo", 3);
		Source.bFailAtEnd = true;
		FLineReader Reader(Source);
		EXPECT_EQ(ReadAll(Reader), (std::vector<std::string>{"one", "two"}));
	}
}
