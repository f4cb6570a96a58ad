#include "HostTestSupport.h"
#include "Demo.h"
#include "McpServer.h"

#include <vector>

using namespace Calvorn::Host;
using namespace HostTests;

namespace
{
	FMcpServerInfo TestInfo()
	{
		FMcpServerInfo Info;
		Info.Name = TEXT("calvorn-bp");
		Info.Title = TEXT("Calvorn Blueprint tools");
		Info.Version = TEXT("9.8.7");
		Info.Instructions = TEXT("Use the tools.");
		return Info;
	}

	std::string InitializeLine(const char* Version)
	{
		return std::string(R"({"jsonrpc":"2.0","id":0,"method":"initialize","params":{"protocolVersion":")") + Version
			+ R"(","capabilities":{},"clientInfo":{"name":"test","version":"1"}}})";
	}

	class McpServer : public FHostToolsTest
	{
	protected:
		FMcpServer MakeServer() { return FMcpServer(Executor.ToSharedRef(), TestInfo()); }

		/** Sends a line and returns the reply as an object; fails the test when there is none or it is not JSON. */
		TSharedPtr<FJsonObject> Send(FMcpServer& Server, const std::string& Line)
		{
			const std::string Reply = Server.HandleMessage(Line);
			EXPECT_FALSE(Reply.empty()) << Line;
			EXPECT_EQ(Reply.find('\n'), std::string::npos) << "a reply must be one line: " << Reply;
			TSharedPtr<FJsonObject> Object = ParseObject(Reply);
			EXPECT_TRUE(Object.IsValid()) << Reply;
			return Object.IsValid() ? Object : MakeShared<FJsonObject>();
		}

		TSharedPtr<FJsonObject> Result(const TSharedPtr<FJsonObject>& Reply)
		{
			const TSharedPtr<FJsonObject>* Found = nullptr;
			EXPECT_TRUE(Reply->TryGetObjectField(TEXT("result"), Found)) << ToLine(Reply);
			return Found ? *Found : MakeShared<FJsonObject>();
		}

		TSharedPtr<FJsonObject> CallTool(FMcpServer& Server, const std::string& Params)
		{
			return Result(Send(Server, R"({"jsonrpc":"2.0","id":5,"method":"tools/call","params":)" + Params + "}"));
		}
	};

	TEST_F(McpServer, InitializeAgreesOnAVersionTheServerSpeaks)
	{
		const struct
		{
			const char* Requested;
			const char* Expected;
		} Cases[] = {
			{"2025-06-18", "2025-06-18"},
			{"2025-03-26", "2025-03-26"},
			{"2024-11-05", "2024-11-05"},
			{"2025-11-25", "2025-06-18"},
			{"2024-10-07", "2025-06-18"},
			{"", "2025-06-18"},
			{"2025-06-18 ", "2025-06-18"},
		};
		for (const auto& Case : Cases)
		{
			FMcpServer Server = MakeServer();
			const TSharedPtr<FJsonObject> Answer = Result(Send(Server, InitializeLine(Case.Requested)));
			EXPECT_EQ(U8(Answer->GetStringField(TEXT("protocolVersion"))), Case.Expected) << Case.Requested;
			EXPECT_EQ(U8(Server.GetProtocolVersion()), Case.Expected);
		}
	}

	TEST_F(McpServer, InitializeDescribesTheServer)
	{
		FMcpServer Server = MakeServer();
		const std::string Reply = Server.HandleMessage(InitializeLine("2025-06-18"));
		EXPECT_EQ(Reply, R"({"jsonrpc":"2.0","id":0,"result":{"protocolVersion":"2025-06-18","capabilities":{"tools":{"listChanged":false}},)"
						 R"("serverInfo":{"name":"calvorn-bp","title":"Calvorn Blueprint tools","version":"9.8.7"},"instructions":"Use the tools."}})");

		// Before 2025-06-18 an implementation had no title.
		const TSharedPtr<FJsonObject> Older = Result(Send(Server, InitializeLine("2025-03-26")));
		EXPECT_FALSE(Older->GetObjectField(TEXT("serverInfo"))->HasField(TEXT("title")));
	}

	TEST_F(McpServer, InitializeNeedsAVersionString)
	{
		for (const char* Params : {R"({})", R"({"protocolVersion":20250618})", R"({"protocolversion":"2025-06-18"})"})
		{
			FMcpServer Server = MakeServer();
			const std::string Reply = Server.HandleMessage(std::string(R"({"jsonrpc":"2.0","id":"i","method":"initialize","params":)") + Params + "}");
			EXPECT_EQ(Reply, R"({"jsonrpc":"2.0","id":"i","error":{"code":-32602,"message":"Invalid params: \"protocolVersion\" must be a string"}})") << Params;
		}
		FMcpServer Server = MakeServer();
		EXPECT_EQ(Server.HandleMessage(R"({"jsonrpc":"2.0","id":1,"method":"initialize"})"),
			R"({"jsonrpc":"2.0","id":1,"error":{"code":-32602,"message":"Invalid params: \"protocolVersion\" must be a string"}})");
	}

	TEST_F(McpServer, AnswersEveryMalformedMessageAndKeepsGoing)
	{
		const struct
		{
			std::string Line;
			std::string ExpectedPrefix;
		} Cases[] = {
			{"this is not json", R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700,"message":"Parse error: )"},
			{"[1,2", R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700,)"},
			{"17", R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600,)"},
			{R"([{"jsonrpc":"2.0","id":1,"method":"ping"}])", R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600,"message":"Invalid Request: batches are not supported)"},
			{R"({"jsonrpc":"2.0","id":[1],"method":"ping"})", R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600,)"},
			{R"({"id":4,"method":"ping"})", R"({"jsonrpc":"2.0","id":4,"error":{"code":-32600,"message":"Invalid Request: \"jsonrpc\" must be \"2.0\""}})"},
			{R"({"jsonrpc":"2.0","id":4})", R"({"jsonrpc":"2.0","id":4,"error":{"code":-32600,"message":"Invalid Request: \"method\" is missing"}})"},
			{R"({"jsonrpc":"2.0","id":4,"method":["ping"]})", R"({"jsonrpc":"2.0","id":4,"error":{"code":-32600,"message":"Invalid Request: \"method\" must be a string"}})"},
			{R"({"jsonrpc":"2.0","id":4,"method":"ping","params":3})", R"({"jsonrpc":"2.0","id":4,"error":{"code":-32600,)"},
			{R"({"jsonrpc":"2.0","id":4,"method":"ping","params":[]})", R"({"jsonrpc":"2.0","id":4,"error":{"code":-32602,"message":"Invalid params: \"params\" must be an object"}})"},
			{R"({"jsonrpc":"2.0","id":4,"method":"resources/list"})", R"({"jsonrpc":"2.0","id":4,"error":{"code":-32601,"message":"Method not found: resources/list"}})"},
			{R"({"jsonrpc":"2.0","id":4,"method":"Ping"})", R"({"jsonrpc":"2.0","id":4,"error":{"code":-32601,"message":"Method not found: Ping"}})"},
			{R"({"jsonrpc":"2.0","id":4,"method":"tools/call"})", R"({"jsonrpc":"2.0","id":4,"error":{"code":-32602,"message":"Invalid params: \"name\" must be the name of a tool"}})"},
			{R"({"jsonrpc":"2.0","id":4,"method":"tools/call","params":{"name":7}})", R"({"jsonrpc":"2.0","id":4,"error":{"code":-32602,"message":"Invalid params: \"name\" must be the name of a tool"}})"},
			{R"({"jsonrpc":"2.0","id":4,"method":"tools/call","params":{"tool":"sum_numbers"}})", R"({"jsonrpc":"2.0","id":4,"error":{"code":-32602,)"},
			{R"({"jsonrpc":"2.0","id":4,"method":"tools/call","params":{"name":"sum_numbers","arguments":[1]}})", R"({"jsonrpc":"2.0","id":4,"error":{"code":-32602,"message":"Invalid params: \"arguments\" must be an object"}})"},
			{R"({"jsonrpc":"2.0","id":4,"method":"tools/call","params":{"name":"sum_numbers","arguments":"{}"}})", R"({"jsonrpc":"2.0","id":4,"error":{"code":-32602,"message":"Invalid params: \"arguments\" must be an object"}})"},
			{R"({"jsonrpc":"2.0","id":4,"method":"tools/list","params":{"cursor":"abc"}})", R"({"jsonrpc":"2.0","id":4,"error":{"code":-32602,)"},
		};
		FMcpServer Server = MakeServer();
		Send(Server, InitializeLine("2025-06-18"));
		for (const auto& Case : Cases)
		{
			const std::string Reply = Server.HandleMessage(Case.Line);
			EXPECT_EQ(Reply.substr(0, Case.ExpectedPrefix.size()), Case.ExpectedPrefix) << Case.Line;
			// The same server still answers a good request afterwards.
			EXPECT_EQ(Server.HandleMessage(R"({"jsonrpc":"2.0","id":"after","method":"ping"})"), R"({"jsonrpc":"2.0","id":"after","result":{}})") << "after " << Case.Line;
		}
		EXPECT_EQ(SumTool->RunCount, 0) << "no malformed call may reach a tool";
	}

	TEST_F(McpServer, NotificationsRepliesAndBlankLinesGetNoAnswer)
	{
		FMcpServer Server = MakeServer();
		EXPECT_FALSE(Server.IsClientInitialized());
		const char* Silent[] = {
			"",
			"   \t",
			R"({"jsonrpc":"2.0","method":"notifications/initialized"})",
			R"({"jsonrpc":"2.0","method":"notifications/cancelled","params":{"requestId":3}})",
			R"({"jsonrpc":"2.0","method":"no/such/notification"})",
			// A notification is never answered, even when it would be an error as a request.
			R"({"jsonrpc":"2.0","method":"tools/call","params":{"name":"sum_numbers","arguments":{"numbers":[1]}}})",
			R"({"jsonrpc":"2.0","method":"initialize","params":[]})",
			R"({"jsonrpc":"2.0","id":12,"result":{"roots":[]}})",
			R"({"jsonrpc":"2.0","id":13,"error":{"code":-1,"message":"no"}})",
		};
		for (const char* Line : Silent)
		{
			EXPECT_EQ(Server.HandleMessage(Line), "") << Line;
		}
		EXPECT_TRUE(Server.IsClientInitialized());
		EXPECT_EQ(SumTool->RunCount, 0) << "a tools/call without an id is not a call";
	}

	TEST_F(McpServer, PingAnswersTheSameIdWithAnEmptyResult)
	{
		FMcpServer Server = MakeServer();
		for (const char* Id : {"1", "0", "-5", "1.50", "123456789012345678901234567890", R"("abc")", R"("")", R"("\u00e9")"})
		{
			EXPECT_EQ(Server.HandleMessage(std::string(R"({"jsonrpc":"2.0","id":)") + Id + R"(,"method":"ping"})"),
				std::string(R"({"jsonrpc":"2.0","id":)") + (std::string(Id) == R"("\u00e9")" ? "\"\xc3\xa9\"" : Id) + R"(,"result":{}})");
		}
		EXPECT_EQ(Server.HandleMessage(R"({"jsonrpc":"2.0","id":2,"method":"ping","params":{"_meta":{}}})"), R"({"jsonrpc":"2.0","id":2,"result":{}})");
	}

	TEST_F(McpServer, ToolsListDescribesEachToolInRegistrationOrder)
	{
		FMcpServer Server = MakeServer();
		Send(Server, InitializeLine("2025-06-18"));
		const std::string Reply = Server.HandleMessage(R"({"jsonrpc":"2.0","id":2,"method":"tools/list","params":{}})");
		const std::string OutputSchema = ToLine(FMcpServer::MakeToolResultSchema());
		EXPECT_EQ(Reply,
			R"({"jsonrpc":"2.0","id":2,"result":{"tools":[)"
			R"({"name":"sum_numbers","description":"Adds numbers",)"
			R"("inputSchema":{"type":"object","properties":{"numbers":{"type":"array","items":{"type":"number"}}},"required":["numbers"]},)"
			R"("outputSchema":)" + OutputSchema + R"(,"annotations":{"readOnlyHint":true},)"
			R"("_meta":{"calvorn/category":"Test","calvorn/metadata":{"operation_type":"read","data_type":"Test","sub_operation":"sum"}}},)"
			R"({"name":"keep_note","description":"Keeps a note","inputSchema":{"type":"object"},"outputSchema":)" + OutputSchema + ","
			R"("_meta":{"calvorn/category":"Test","calvorn/metadata":{"operation_type":"modify","data_type":"Test"}}}]}})");
	}

	TEST_F(McpServer, ToolsListUsesOnlyWhatTheAgreedVersionHas)
	{
		const struct
		{
			const char* Version;
			bool bAnnotations;
			bool bOutputSchemaAndMeta;
		} Cases[] = {{"2024-11-05", false, false}, {"2025-03-26", true, false}, {"2025-06-18", true, true}};
		for (const auto& Case : Cases)
		{
			FMcpServer Server = MakeServer();
			Send(Server, InitializeLine(Case.Version));
			const TSharedPtr<FJsonObject> Answer = Result(Send(Server, R"({"jsonrpc":"2.0","id":2,"method":"tools/list"})"));
			const TSharedPtr<FJsonObject> Sum = Answer->GetArrayField(TEXT("tools"))[0]->AsObject();
			EXPECT_EQ(Sum->HasField(TEXT("annotations")), Case.bAnnotations) << Case.Version;
			EXPECT_EQ(Sum->HasField(TEXT("outputSchema")), Case.bOutputSchemaAndMeta) << Case.Version;
			EXPECT_EQ(Sum->HasField(TEXT("_meta")), Case.bOutputSchemaAndMeta) << Case.Version;
			EXPECT_TRUE(Sum->HasTypedField<EJson::Object>(TEXT("inputSchema"))) << Case.Version;
		}
	}

	TEST_F(McpServer, ToolsListFollowsRegistrations)
	{
		FMcpServer Server = MakeServer();
		ASSERT_TRUE(Executor->UnregisterTool(TEXT("sum_numbers")));
		EXPECT_EQ(Server.HandleMessage(R"({"jsonrpc":"2.0","id":2,"method":"tools/list"})").find("sum_numbers"), std::string::npos);
		ASSERT_TRUE(Executor->UnregisterTool(TEXT("keep_note")));
		EXPECT_EQ(Server.HandleMessage(R"({"jsonrpc":"2.0","id":2,"method":"tools/list"})"), R"({"jsonrpc":"2.0","id":2,"result":{"tools":[]}})");
	}

	TEST(McpToolInputSchema, IsAlwaysAnObjectSchema)
	{
		const struct
		{
			const TCHAR* Schema;
			std::string Expected;
		} Cases[] = {
			{TEXT(""), R"({"type":"object"})"},
			{TEXT("{}"), R"({"type":"object"})"},
			{TEXT("not json"), R"({"type":"object"})"},
			{TEXT("[]"), R"({"type":"object"})"},
			{TEXT(R"({"type":"array","items":{}})"), R"({"type":"object"})"},
			{TEXT(R"({"properties":{"path":{"type":"string"}},"required":["path"]})"), R"({"type":"object","properties":{"path":{"type":"string"}},"required":["path"]})"},
			{TEXT(R"({"$schema":"https://json-schema.org/draft/2020-12/schema","type":"object","additionalProperties":false})"),
				R"({"$schema":"https://json-schema.org/draft/2020-12/schema","type":"object","additionalProperties":false})"},
		};
		for (const auto& Case : Cases)
		{
			Calvorn::FToolDescriptor Tool;
			Tool.Name = TEXT("t");
			Tool.SchemaJson = Case.Schema;
			EXPECT_EQ(ToLine(FMcpServer::MakeToolInputSchema(Tool)), Case.Expected) << U8(Case.Schema);
		}
	}

	TEST_F(McpServer, ToolsCallReturnsTheResultAsTextAndStructuredContent)
	{
		FMcpServer Server = MakeServer();
		Send(Server, InitializeLine("2025-06-18"));
		const std::string Reply = Server.HandleMessage(R"({"jsonrpc":"2.0","id":"c1","method":"tools/call","params":{"name":"sum_numbers","arguments":{"numbers":[1,2.5,-4]}}})");
		const std::string Structured = R"({"success":true,"errors":[],"warnings":[],"messages":["Added 3 numbers"],)"
									   R"("data":{"received":"{\"numbers\":[1,2.5,-4]}","request_id":"c1","sum":"-0.5"},"read_backs":[]})";
		EXPECT_EQ(Reply, R"({"jsonrpc":"2.0","id":"c1","result":{"content":[{"type":"text","text":)" + U8(EscapeJsonString(UTF8ToFString(Structured)))
							 + R"(}],"structuredContent":)" + Structured + R"(,"isError":false}})");
		EXPECT_EQ(SumTool->RunCount, 1);
	}

	TEST_F(McpServer, ToolsCallReportsFailedCallsAsErrorResults)
	{
		const struct
		{
			std::string Params;
			bool bIsError;
			std::string Errors;
			std::string Warnings;
		} Cases[] = {
			{R"({"name":"sum_numbers","arguments":{"numbers":[1,2]}})", false, "[]", "[]"},
			{R"({"name":"sum_numbers","arguments":{}})", true, R"(["Missing required field 'numbers'"])", "[]"},
			{R"({"name":"sum_numbers"})", true, R"(["Missing required field 'numbers'"])", "[]"},
			{R"({"name":"sum_numbers","arguments":null})", true, R"(["Missing required field 'numbers'"])", "[]"},
			// One failed item of a batch fails the call for the client, though the tool raised no error.
			{R"({"name":"sum_numbers","arguments":{"numbers":[1,"two",3]}})", true, "[]", R"(["[Failure] Item 1 is not a number"])"},
			{R"({"name":"no_such_tool","arguments":{}})", true, R"(["Unknown tool: no_such_tool"])", "[]"},
			{R"({"name":"","arguments":{}})", true, R"(["Unknown tool: "])", "[]"},
			{R"({"name":"keep_note"})", false, "[]", "[]"},
		};
		FMcpServer Server = MakeServer();
		Send(Server, InitializeLine("2025-06-18"));
		for (const auto& Case : Cases)
		{
			const TSharedPtr<FJsonObject> Answer = CallTool(Server, Case.Params);
			EXPECT_EQ(Answer->GetBoolField(TEXT("isError")), Case.bIsError) << Case.Params;
			const TSharedPtr<FJsonObject> Structured = Answer->GetObjectField(TEXT("structuredContent"));
			ASSERT_TRUE(Structured.IsValid()) << Case.Params;
			EXPECT_EQ(Structured->GetBoolField(TEXT("success")), !Case.bIsError) << Case.Params;
			EXPECT_EQ(ToLine(Structured).find(R"("errors":)" + Case.Errors + R"(,"warnings":)" + Case.Warnings) != std::string::npos, true) << ToLine(Structured);
			// The text content is the same result, for clients that read only text.
			const TArray<TSharedPtr<FJsonValue>>& Content = Answer->GetArrayField(TEXT("content"));
			ASSERT_EQ(Content.Num(), 1);
			EXPECT_EQ(U8(Content[0]->AsObject()->GetStringField(TEXT("type"))), "text");
			EXPECT_EQ(U8(Content[0]->AsObject()->GetStringField(TEXT("text"))), ToLine(Structured)) << Case.Params;
		}
	}

	TEST_F(McpServer, ToolsCallPassesArgumentsThroughUnchanged)
	{
		FMcpServer Server = MakeServer();
		const char* Arguments[] = {
			R"({"numbers":[12345678901234567890123,0.1,1e-7]})",
			R"({"numbers":[],"label":"\u00e9\ud83d\ude00 \"quoted\" \\ \n","nested":{"a":[true,false,null]}})",
		};
		for (const char* Argument : Arguments)
		{
			const TSharedPtr<FJsonObject> Answer = CallTool(Server, std::string(R"({"name":"sum_numbers","arguments":)") + Argument + "}");
			const TSharedPtr<FJsonObject> Data = Answer->GetObjectField(TEXT("structuredContent"))->GetObjectField(TEXT("data"));
			const TSharedPtr<FJsonObject> Expected = ParseObject(Argument, FJsonSerializer::EFlags::StoreNumbersAsStrings);
			ASSERT_TRUE(Expected.IsValid());
			EXPECT_EQ(U8(Data->GetStringField(TEXT("received"))), ToLine(Expected)) << Argument;
		}
		const TSharedPtr<FJsonObject> Big = CallTool(Server, R"({"name":"sum_numbers","arguments":{"numbers":[12345678901234567890123]}})");
		EXPECT_EQ(U8(Big->GetObjectField(TEXT("structuredContent"))->GetObjectField(TEXT("data"))->GetStringField(TEXT("received"))), R"({"numbers":[12345678901234567890123]})");
	}

	TEST_F(McpServer, ToolsCallBeforeStructuredContentExistedSendsTextOnly)
	{
		FMcpServer Server = MakeServer();
		Send(Server, InitializeLine("2025-03-26"));
		const TSharedPtr<FJsonObject> Answer = CallTool(Server, R"({"name":"sum_numbers","arguments":{"numbers":[2]}})");
		EXPECT_FALSE(Answer->HasField(TEXT("structuredContent")));
		EXPECT_FALSE(Answer->GetBoolField(TEXT("isError")));
		EXPECT_EQ(ToLine(Answer),
			R"({"content":[{"type":"text","text":"{\"success\":true,\"errors\":[],\"warnings\":[],\"messages\":[\"Added 1 numbers\"],\"data\":{\"received\":\"{\\\"numbers\\\":[2]}\",\"request_id\":\"5\",\"sum\":\"2\"},\"read_backs\":[]}"}],"isError":false})");
	}

	/** In-memory input, whole or in small pieces. */
	class FStringSource : public IByteSource
	{
	public:
		FStringSource(std::string InData, size_t InChunk)
			: Data(MoveTemp(InData))
			, Chunk(InChunk)
		{
		}

		virtual int64 Read(char* Buffer, int64 Capacity) override
		{
			const size_t Count = std::min({Chunk, static_cast<size_t>(Capacity), Data.size() - Offset});
			std::copy_n(Data.data() + Offset, Count, Buffer);
			Offset += Count;
			return static_cast<int64>(Count);
		}

	private:
		std::string Data;
		size_t Chunk;
		size_t Offset = 0;
	};

	class FStringSink : public IByteSink
	{
	public:
		virtual bool Write(std::string_view Bytes) override
		{
			if (WritesLeft == 0)
			{
				return false;
			}
			--WritesLeft;
			Text.append(Bytes);
			return true;
		}

		std::string Text;
		int32 WritesLeft = MAX_int32;
	};

	std::vector<std::string> SplitLines(const std::string& Text)
	{
		std::vector<std::string> Lines;
		size_t Start = 0;
		for (size_t Break = Text.find('\n'); Break != std::string::npos; Break = Text.find('\n', Start))
		{
			Lines.push_back(Text.substr(Start, Break - Start));
			Start = Break + 1;
		}
		EXPECT_EQ(Start, Text.size()) << "every reply ends with a line break";
		return Lines;
	}

	TEST_F(McpServer, ServeAnswersLineByLineUntilTheInputEnds)
	{
		const std::string Input = InitializeLine("2025-06-18") + "\r\n"
								+ R"({"jsonrpc":"2.0","method":"notifications/initialized"})" + "\n"
								+ "\n"
								+ "garbage\n"
								+ std::string(300, 'x') + "\n"
								+ R"({"jsonrpc":"2.0","id":2,"method":"tools/call","params":{"name":"sum_numbers","arguments":{"numbers":[4,5]}}})" + "\n"
								+ R"({"jsonrpc":"2.0","id":3,"method":"ping"})";
		for (const size_t Chunk : {size_t(1), size_t(13), size_t(1) << 16})
		{
			FMcpServer Server = MakeServer();
			FStringSource Source(Input, Chunk);
			FStringSink Sink;
			Server.Serve(Source, Sink, 256);
			const std::vector<std::string> Lines = SplitLines(Sink.Text);
			ASSERT_EQ(Lines.size(), 5u) << Sink.Text;
			EXPECT_NE(Lines[0].find(R"("protocolVersion":"2025-06-18")"), std::string::npos);
			EXPECT_EQ(Lines[1].substr(0, 62), R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700,"message":"P)");
			EXPECT_EQ(Lines[2], R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700,"message":"Parse error: the message is longer than 256 bytes"}})");
			EXPECT_NE(Lines[3].find(R"(\"sum\":\"9\")"), std::string::npos) << Lines[3];
			EXPECT_EQ(Lines[4], R"({"jsonrpc":"2.0","id":3,"result":{}})");
			EXPECT_TRUE(Server.IsClientInitialized());
		}
	}

	TEST_F(McpServer, ServeStopsWhenTheClientStopsReading)
	{
		FMcpServer Server = MakeServer();
		std::string Input;
		for (int32 Index = 0; Index < 10; ++Index)
		{
			Input += R"({"jsonrpc":"2.0","id":1,"method":"tools/call","params":{"name":"sum_numbers","arguments":{"numbers":[1]}}})" "\n";
		}
		FStringSource Source(Input, 1 << 16);
		FStringSink Sink;
		Sink.WritesLeft = 2;
		Server.Serve(Source, Sink);
		EXPECT_EQ(SplitLines(Sink.Text).size(), 2u);
		EXPECT_EQ(SumTool->RunCount, 3) << "the call whose answer could not be written is the last one run";
	}

	TEST_F(McpServer, DemoShowsTheRegisteredToolsAndAnErrorResult)
	{
		FMcpServer Server = MakeServer();
		std::vector<std::string> Lines;
		EXPECT_TRUE(RunDemoSession(Server, [&Lines](const FString& Line) { Lines.push_back(U8(Line)); }));
		std::string Text;
		for (const std::string& Line : Lines)
		{
			Text += Line + "\n";
			EXPECT_TRUE(Line.rfind("> ", 0) == 0 || Line.rfind("< ", 0) == 0 || Line.rfind("    ", 0) == 0) << Line;
		}
		EXPECT_NE(Text.find("< server calvorn-bp 9.8.7 speaks MCP 2025-06-18; capabilities: tools\n"), std::string::npos) << Text;
		EXPECT_NE(Text.find("< 2 tools:\n    sum_numbers: Adds numbers\n    keep_note: Keeps a note\n"), std::string::npos) << Text;
		EXPECT_NE(Text.find(R"(< isError: true; errors: "Unknown tool: no_such_tool"; warnings: none; messages: none; data: {}; read-backs: 0)"), std::string::npos) << Text;
		EXPECT_NE(Text.find("< JSON-RPC error -32700: Parse error: "), std::string::npos) << Text;
		EXPECT_EQ(Text.find("[UNEXPECTED]"), std::string::npos) << Text;
	}

	TEST_F(McpServer, DemoSaysSoWhenNoToolIsRegistered)
	{
		Executor->UnregisterTool(TEXT("sum_numbers"));
		Executor->UnregisterTool(TEXT("keep_note"));
		FMcpServer Server = MakeServer();
		std::string Text;
		EXPECT_TRUE(RunDemoSession(Server, [&Text](const FString& Line) { Text += U8(Line) + "\n"; }));
		EXPECT_NE(Text.find("< 0 tools. None is registered in this build yet"), std::string::npos) << Text;
	}

	TEST(McpDemo, SummarizesAToolCallFromItsTextWhenThereIsNoStructuredContent)
	{
		const TSharedPtr<FJsonObject> CallResult = ParseObject(
			R"({"content":[{"type":"text","text":"{\"success\":false,\"errors\":[],\"warnings\":[\"[Failure] x\"],\"messages\":[\"done\"],\"data\":{\"a\":\"1\",\"b\":\"2\"},\"read_backs\":[{\"tool\":\"t\",\"result\":{}}]}"}],"isError":true})");
		ASSERT_TRUE(CallResult.IsValid());
		EXPECT_EQ(U8(SummarizeToolCallResult(*CallResult)), R"(isError: true; errors: none; warnings: "[Failure] x"; messages: "done"; data: {a, b}; read-backs: 1)");
		EXPECT_EQ(U8(SummarizeToolCallResult(*ParseObject(R"({"content":[],"isError":false})"))), "isError: false; no readable result");
	}
}
