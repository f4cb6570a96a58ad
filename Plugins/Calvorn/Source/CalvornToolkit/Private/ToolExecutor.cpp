#include "ToolExecutor.h"

#include "Dom/JsonObject.h"
#include "ModificationReadRegistry.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"
#include "ToolSchemas.h"

namespace Calvorn
{
	namespace
	{
		FString SerializeCondensed(const TSharedPtr<FJsonObject>& Object)
		{
			FString Text;
			const TSharedRef<TJsonWriter<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>> Writer = TJsonWriterFactory<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>::Create(&Text);
			FJsonSerializer::Serialize(Object.ToSharedRef(), Writer);
			return Text;
		}

		/** The "data_type" word of a tool's metadata text, when the text is an object that has one. */
		FString DataTypeOfMetadata(const FString& MetadataJson)
		{
			TSharedPtr<FJsonObject> Metadata;
			if (!FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::Create(MetadataJson), Metadata) || !Metadata.IsValid())
			{
				return FString();
			}
			FString DataType;
			Metadata->TryGetStringField(TEXT("data_type"), DataType);
			return DataType;
		}
	}

	int32 FToolExecutor::IndexOf(const FString& Name) const
	{
		return Tools.IndexOfByPredicate([&Name](const FEntry& Entry) { return Entry.Name == Name; });
	}

	TArray<FToolExecutor::FEntry> FToolExecutor::CopyTools() const
	{
		std::lock_guard<std::mutex> Lock(ToolsMutex);
		return Tools;
	}

	bool FToolExecutor::RegisterTool(const FString& Name, TSharedPtr<ITool> Tool)
	{
		std::lock_guard<std::mutex> Lock(ToolsMutex);
		if (Name.IsEmpty() || !Tool.IsValid() || IndexOf(Name) != INDEX_NONE)
		{
			return false;
		}
		Tools.Add(FEntry{Name, MoveTemp(Tool)});
		return true;
	}

	bool FToolExecutor::UnregisterTool(const FString& Name)
	{
		std::lock_guard<std::mutex> Lock(ToolsMutex);
		const int32 Index = IndexOf(Name);
		if (Index == INDEX_NONE)
		{
			return false;
		}
		// RemoveAt keeps the order of the others, which is the order clients list them in.
		Tools.RemoveAt(Index);
		return true;
	}

	TArray<FString> FToolExecutor::GetToolNames() const
	{
		const TArray<FEntry> Entries = CopyTools();
		TArray<FString> Names;
		Names.Reserve(Entries.Num());
		for (const FEntry& Entry : Entries)
		{
			Names.Add(Entry.Name);
		}
		return Names;
	}

	TSharedPtr<ITool> FToolExecutor::FindTool(const FString& Name) const
	{
		std::lock_guard<std::mutex> Lock(ToolsMutex);
		const int32 Index = IndexOf(Name);
		return Index != INDEX_NONE ? Tools[Index].Tool : TSharedPtr<ITool>();
	}

	FToolResult FToolExecutor::ExecuteCommand(const FToolCommand& Command)
	{
		TSharedPtr<FToolResult> Result = MakeShared<FToolResult>(Command);

		const TSharedPtr<ITool> Tool = FindTool(Command.GetToolName());
		if (!Tool.IsValid())
		{
			Result->AddErrorMessage(FString::Printf(TEXT("Unknown tool: %s"), *Command.GetToolName()));
			return *Result;
		}
		if (RunningThread.load() == std::this_thread::get_id())
		{
			Result->AddErrorMessage(FString::Printf(TEXT("Tool '%s' was called while another tool call was still running; tools run one call at a time"), *Command.GetToolName()));
			return *Result;
		}

		std::lock_guard<std::mutex> CallLock(CallMutex);
		RunningThread.store(std::this_thread::get_id());
		int32 CompletionCount = 0;
		TOptional<FToolResult> Completed;
		Tool->Run(Command, Result, FOnToolCompleted::CreateLambda([&CompletionCount, &Completed](FToolResult& Done)
		{
			if (++CompletionCount == 1)
			{
				Completed.Emplace(Done);
			}
		}));
		RunningThread.store(std::thread::id());

		if (CompletionCount == 0)
		{
			// The tool returned without reporting: whatever it wrote is kept, marked as an incomplete call.
			Result->AddErrorMessage(FString::Printf(TEXT("Tool '%s' returned without completing its call"), *Command.GetToolName()));
			return *Result;
		}
		FToolResult Final = MoveTemp(Completed.GetValue());
		if (CompletionCount > 1)
		{
			Final.AddErrorMessage(FString::Printf(TEXT("Tool '%s' completed its call %d times; only the first completion is reported"), *Command.GetToolName(), CompletionCount));
		}
		return Final;
	}

	TArray<FToolDescriptor> FToolExecutor::ListTools() const
	{
		const FModificationReadRegistry& ReadRegistry = FModificationReadRegistry::Get();
		// The tools are asked outside the lock: a tool may look the executor up while it answers.
		const TArray<FEntry> Entries = CopyTools();
		TArray<FToolDescriptor> Descriptors;
		Descriptors.Reserve(Entries.Num());
		for (const FEntry& Entry : Entries)
		{
			FToolDescriptor& Descriptor = Descriptors.AddDefaulted_GetRef();
			Descriptor.Name = Entry.Name;
			Descriptor.Description = Entry.Tool->GetDescription();
			Descriptor.MetadataJson = Entry.Tool->GetMetadata();

			Descriptor.Category = ReadRegistry.GetReadToolCategory(Entry.Name);
			if (Descriptor.Category.IsEmpty())
			{
				Descriptor.Category = DataTypeOfMetadata(Descriptor.MetadataJson);
			}

			if (const TSharedPtr<FJsonObject> Schema = ToolInfo::GetToolParameterSchema(Entry.Name))
			{
				Descriptor.SchemaJson = SerializeCondensed(Schema);
			}
			else
			{
				FString OwnSchema = Entry.Tool->GetSchema();
				OwnSchema.TrimStartAndEndInline();
				Descriptor.SchemaJson = OwnSchema.IsEmpty() ? FString(TEXT("{}")) : OwnSchema;
			}
		}
		return Descriptors;
	}
}
