// read_blueprint_event over an event graph of 2,000 nodes and 3,000 links, against the time the JSON library
// alone takes to print the same document. The read's figure includes everything a client pays for: the tool
// call through the executor, the asset lookup, the graph walk, building and printing the document.

#include "AssetRegistry/AssetRegistryModule.h"
#include "AssetRegistry/IAssetRegistry.h"
#include "BlueprintReadUtils.h"
#include "CalvornToolkitModule.h"
#include "CoreMinimal.h"
#include "Dom/JsonObject.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "HAL/PlatformMisc.h"
#include "Headless/HeadlessProject.h"
#include "IToolExecutor.h"
#include "K2Node_CallFunction.h"
#include "K2Node_CustomEvent.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"
#include "Modules/ModuleManager.h"
#include "Policies/CondensedJsonPrintPolicy.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"
#include "ToolCommand.h"
#include "ToolInfo.h"
#include "ToolResult.h"
#include "UObject/Package.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace
{
	constexpr int32 NumEvents = 20;
	// Per event: the event, 66 prints in one execution chain, 33 pure additions each feeding two prints'
	// durations, and 18 of the additions chained through their first input: 100 nodes and 150 links.
	constexpr int32 PrintsPerEvent = 66;
	constexpr int32 AddsPerEvent = 33;
	constexpr int32 ChainedAddsPerEvent = 18;

	const TCHAR* const BenchPath = TEXT("/Game/Bench/BP_Events");

	/** A temporary project holding one Blueprint with the large event graph, made on first use. */
	class FEventGraphProject
	{
	public:
		static FEventGraphProject& Get()
		{
			static FEventGraphProject Project;
			return Project;
		}

		bool IsReady() const { return Error.IsEmpty(); }
		const FString& GetError() const { return Error; }
		int32 GetNodeCount() const { return NodeCount; }
		int32 GetLinkCount() const { return LinkCount; }

		~FEventGraphProject()
		{
			FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit_Blueprint"));
			FModuleManager::Get().UnloadModule(TEXT("CalvornToolkit"));
			UE::Headless::CloseProject();
			std::error_code Ignored;
			std::filesystem::remove_all(Root, Ignored);
		}

	private:
		FEventGraphProject()
		{
			std::string Template = (std::filesystem::temp_directory_path() / "calvorn-readers-XXXXXX").string();
			if (!::mkdtemp(Template.data()))
			{
				Error = TEXT("cannot make a temporary folder");
				return;
			}
			Root = Template;
			const FString RootDir(UTF8_TO_TCHAR(Template.c_str()));
			FFileHelper::SaveStringToFile(TEXT("{\"FileVersion\": 3}\n"), *(RootDir / TEXT("Bench.uproject")));
			if (!UE::Headless::OpenProject(RootDir / TEXT("Bench.uproject"), Error))
			{
				return;
			}
			Error.Reset();
			FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
			FModuleManager::Get().LoadModule(TEXT("KismetCompiler"));
			FModuleManager::Get().LoadModule(TEXT("CalvornToolkit"));
			FModuleManager::Get().LoadModule(TEXT("CalvornToolkit_Blueprint"));
			FPlatformMisc::SeedGuidGenerator(2000);
			BuildBlueprint();
		}

		template <typename T, typename SetupType>
		T* Place(UEdGraph* Graph, SetupType&& Setup, int32 X, int32 Y)
		{
			T* Node = static_cast<T*>(Graph->CreateNode(T::StaticClass(), false, false));
			Node->CreateNewGuid();
			Node->NodePosX = X;
			Node->NodePosY = Y;
			Setup(*Node);
			Node->PostPlacedNewNode();
			if (Node->Pins.Num() == 0)
			{
				Node->AllocateDefaultPins();
			}
			++NodeCount;
			return Node;
		}

		void Link(UEdGraphNode* From, const TCHAR* FromPin, UEdGraphNode* To, const TCHAR* ToPin)
		{
			UEdGraphPin* A = From->FindPin(FromPin);
			UEdGraphPin* B = To->FindPin(ToPin);
			if (A && B && GetDefault<UEdGraphSchema_K2>()->TryCreateConnection(A, B))
			{
				++LinkCount;
			}
			else if (Error.IsEmpty())
			{
				Error = FString::Printf(TEXT("cannot link %s to %s"), FromPin, ToPin);
			}
		}

		void BuildBlueprint()
		{
			UClass* Actor = FindObject<UClass>(nullptr, TEXT("/Script/Engine.Actor"));
			UClass* SystemLibrary = FindObject<UClass>(nullptr, TEXT("/Script/Engine.KismetSystemLibrary"));
			UClass* MathLibrary = FindObject<UClass>(nullptr, TEXT("/Script/Engine.KismetMathLibrary"));
			const UFunction* Print = SystemLibrary ? SystemLibrary->FindFunctionByName(TEXT("PrintString")) : nullptr;
			const UFunction* Add = MathLibrary ? MathLibrary->FindFunctionByName(TEXT("Add_DoubleDouble")) : nullptr;
			if (!Actor || !Print || !Add)
			{
				Error = TEXT("the catalogue lacks Actor, PrintString or Add_DoubleDouble");
				return;
			}
			UPackage* Package = CreatePackage(BenchPath);
			UBlueprint* Blueprint = FKismetEditorUtilities::CreateBlueprint(Actor, Package, TEXT("BP_Events"), BPTYPE_Normal, UBlueprint::StaticClass(), UBlueprintGeneratedClass::StaticClass());
			if (!Blueprint || Blueprint->UbergraphPages.Num() == 0)
			{
				Error = TEXT("cannot make the Blueprint");
				return;
			}
			FAssetRegistryModule::AssetCreated(Blueprint);
			UEdGraph* Graph = Blueprint->UbergraphPages[0];
			// Only the graph built here is measured: the editor's default events go.
			while (Graph->Nodes.Num() > 0)
			{
				Graph->RemoveNode(Graph->Nodes.Last());
			}

			for (int32 EventIndex = 0; EventIndex < NumEvents; ++EventIndex)
			{
				const int32 Y = EventIndex * 400;
				UEdGraphNode* Previous = Place<UK2Node_CustomEvent>(Graph, [EventIndex](UK2Node_CustomEvent& Node)
				{
					Node.CustomFunctionName = FName(*FString::Printf(TEXT("Flow%02d"), EventIndex));
				}, 0, Y);
				TArray<UK2Node_CallFunction*> Prints;
				for (int32 Index = 0; Index < PrintsPerEvent; ++Index)
				{
					UK2Node_CallFunction* Node = Place<UK2Node_CallFunction>(Graph, [Print](UK2Node_CallFunction& Call) { Call.SetFromFunction(Print); }, 300 * (Index + 1), Y);
					Link(Previous, TEXT("then"), Node, TEXT("execute"));
					Prints.Add(Node);
					Previous = Node;
				}
				UK2Node_CallFunction* PreviousAdd = nullptr;
				for (int32 Index = 0; Index < AddsPerEvent; ++Index)
				{
					UK2Node_CallFunction* Node = Place<UK2Node_CallFunction>(Graph, [Add](UK2Node_CallFunction& Call) { Call.SetFromFunction(Add); }, 600 * (Index + 1), Y + 200);
					Link(Node, TEXT("ReturnValue"), Prints[2 * Index], TEXT("Duration"));
					Link(Node, TEXT("ReturnValue"), Prints[2 * Index + 1], TEXT("Duration"));
					if (PreviousAdd && Index <= ChainedAddsPerEvent)
					{
						Link(PreviousAdd, TEXT("ReturnValue"), Node, TEXT("A"));
					}
					PreviousAdd = Node;
				}
			}
		}

		std::filesystem::path Root;
		FString Error;
		int32 NodeCount = 0;
		int32 LinkCount = 0;
	};

	const TCHAR* const EventRequest = TEXT("{\"path\": \"/Game/Bench/BP_Events\", \"graph_name\": \"EventGraph\", \"event_name\": \"Custom Event\"}");

	Calvorn::FToolResult CallEventRead()
	{
		return FCalvornToolkitModule::GetToolExecutor()->ExecuteCommand(Calvorn::FToolCommand(TEXT("bench"), Calvorn::ToolInfo::ToolName_ReadBlueprintEvent, EventRequest));
	}

	/** The whole tool call, as a client makes it. */
	void BM_ReadBlueprintEvent(benchmark::State& State)
	{
		FEventGraphProject& Project = FEventGraphProject::Get();
		if (!Project.IsReady())
		{
			State.SkipWithError(TCHAR_TO_UTF8(*Project.GetError()));
			return;
		}
		int64 DocumentChars = 0;
		for (auto _ : State)
		{
			Calvorn::FToolResult Result = CallEventRead();
			const FString Content = Result.GetDatas()->GetStringField(TEXT("content"));
			DocumentChars = Content.Len();
			benchmark::DoNotOptimize(DocumentChars);
		}
		State.counters["nodes"] = Project.GetNodeCount();
		State.counters["links"] = Project.GetLinkCount();
		State.counters["document_chars"] = static_cast<double>(DocumentChars);
	}
	BENCHMARK(BM_ReadBlueprintEvent)->Unit(benchmark::kMillisecond);

	/** The reader alone: ReadBlueprint with the event filter the tool builds. */
	void BM_ReadBlueprintDocument(benchmark::State& State)
	{
		FEventGraphProject& Project = FEventGraphProject::Get();
		if (!Project.IsReady())
		{
			State.SkipWithError(TCHAR_TO_UTF8(*Project.GetError()));
			return;
		}
		TSharedPtr<FJsonObject> Event = MakeShared<FJsonObject>();
		Event->SetStringField(Calvorn::ToolInfo::FieldName_GraphName, TEXT("EventGraph"));
		Event->SetStringField(Calvorn::ToolInfo::FieldName_EventName, TEXT("Custom Event"));
		TSharedPtr<FJsonObject> Request = MakeShared<FJsonObject>();
		Request->SetStringField(Calvorn::ToolInfo::FieldName_Path, TEXT("/Game/Bench/BP_Events.BP_Events"));
		Request->SetArrayField(Calvorn::ToolInfo::FieldName_Events, TArray<TSharedPtr<FJsonValue>>{MakeShared<FJsonValueObject>(Event)});
		Request->SetStringField(Calvorn::ToolInfo::FieldName_ReadTool, Calvorn::ToolInfo::ToolName_ReadBlueprintEvent);
		for (auto _ : State)
		{
			Calvorn::FToolResult Result;
			FString Text = FBlueprintReadUtils::ReadBlueprint(Request, Result);
			benchmark::DoNotOptimize(Text);
		}
	}
	BENCHMARK(BM_ReadBlueprintDocument)->Unit(benchmark::kMillisecond);

	/** The yardstick: printing the same document, already built, with the JSON library alone. */
	void BM_SerializeSameDocument(benchmark::State& State)
	{
		FEventGraphProject& Project = FEventGraphProject::Get();
		if (!Project.IsReady())
		{
			State.SkipWithError(TCHAR_TO_UTF8(*Project.GetError()));
			return;
		}
		Calvorn::FToolResult Result = CallEventRead();
		TSharedPtr<FJsonObject> Document;
		FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::Create(Result.GetDatas()->GetStringField(TEXT("content"))), Document);
		if (!Document.IsValid())
		{
			State.SkipWithError("the read gave no document");
			return;
		}
		int64 Chars = 0;
		for (auto _ : State)
		{
			FString Text;
			const TSharedRef<TJsonWriter<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>> Writer = TJsonWriterFactory<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>::Create(&Text);
			FJsonSerializer::Serialize(Document.ToSharedRef(), Writer);
			Chars = Text.Len();
			benchmark::DoNotOptimize(Text);
		}
		State.counters["document_chars"] = static_cast<double>(Chars);
	}
	BENCHMARK(BM_SerializeSameDocument)->Unit(benchmark::kMillisecond);
}

BENCHMARK_MAIN();
