#include "ToolResult.h"

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "ModificationReadRegistry.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"

namespace Calvorn
{
	namespace
	{
		TArray<TSharedPtr<FJsonValue>> ToJsonStrings(const TArray<FString>& Strings)
		{
			TArray<TSharedPtr<FJsonValue>> Values;
			Values.Reserve(Strings.Num());
			for (const FString& String : Strings)
			{
				Values.Add(MakeShared<FJsonValueString>(String));
			}
			return Values;
		}

		/** A read's text as JSON when it is JSON (object or array), otherwise the text itself. */
		TSharedPtr<FJsonValue> ReadBackValue(const FString& Text)
		{
			TSharedPtr<FJsonValue> Parsed;
			const TSharedRef<TJsonReader<TCHAR>> Reader = TJsonReaderFactory<TCHAR>::Create(Text);
			if (FJsonSerializer::Deserialize(Reader, Parsed) && Parsed.IsValid())
			{
				return Parsed;
			}
			return MakeShared<FJsonValueString>(Text);
		}
	}

	FToolResult::FToolResult()
		: Data(MakeShared<FJsonObject>())
	{
	}

	FToolResult::FToolResult(const FToolCommand& Command)
		: RequestId(Command.GetRequestId())
		, ToolName(Command.GetToolName())
		, Data(MakeShared<FJsonObject>())
	{
	}

	FToolResult& FToolResult::AddErrorMessage(const FString& Message)
	{
		ErrorMessages.Add(Message);
		return *this;
	}

	FToolResult& FToolResult::AddWarningMessage(const FString& Message)
	{
		WarningMessages.Add(Message);
		return *this;
	}

	FToolResult& FToolResult::AddSuccessMessage(const FString& Message)
	{
		SuccessMessages.Add(Message);
		return *this;
	}

	bool FToolResult::HasFailed() const
	{
		if (!WasSuccessful())
		{
			return true;
		}
		return WarningMessages.ContainsByPredicate([](const FString& Warning)
		{
			return Warning.Contains(TEXT("[Failure]"), ESearchCase::IgnoreCase);
		});
	}

	FToolResult& FToolResult::SetData(const FString& Key, const FString& Value)
	{
		Data->SetStringField(Key, Value);
		return *this;
	}

	FToolResult& FToolResult::SetData(const FString& Key, const TSharedPtr<FJsonObject>& Value)
	{
		if (Value.IsValid())
		{
			Data->SetObjectField(Key, Value);
		}
		else
		{
			// A null object would print as nothing useful; JSON null says plainly that there is no value.
			Data->SetField(Key, MakeShared<FJsonValueNull>());
		}
		return *this;
	}

	FToolResult& FToolResult::TrackModification(const FString& ReadToolName, const TSharedPtr<FJsonObject>& ReadParameters)
	{
		PendingReads.Add(FPendingRead{ReadToolName, ReadParameters.IsValid() ? ReadParameters : MakeShared<FJsonObject>()});
		return *this;
	}

	FToolResult& FToolResult::AddModifiedObjects(TWeakObjectPtr<UObject> Object)
	{
		if (Object.IsValid() && !ModifiedObjects.Contains(Object))
		{
			ModifiedObjects.Add(Object);
		}
		return *this;
	}

	FToolResult& FToolResult::FinalizeModifications()
	{
		TArray<FPendingRead> Reads = MoveTemp(PendingReads);
		PendingReads.Reset();

		FModificationReadRegistry& Registry = FModificationReadRegistry::Get();
		for (FPendingRead& Read : Reads)
		{
			FToolResult ReadResult(FToolCommand(RequestId, Read.ToolName, FString()));
			FString Text;
			if (!Registry.ExecuteRead(Read.ToolName, Read.Parameters, ReadResult, Text))
			{
				AddWarningMessage(FString::Printf(TEXT("[Warning] No read tool '%s' is registered; the read-back of the change was skipped"), *Read.ToolName));
				continue;
			}
			for (const FString& Error : ReadResult.GetErrorMessages())
			{
				AddWarningMessage(FString::Printf(TEXT("[Warning] Read-back with %s failed: %s"), *Read.ToolName, *Error));
			}
			for (const FString& Warning : ReadResult.GetWarningMessages())
			{
				AddWarningMessage(FString::Printf(TEXT("[Warning] Read-back with %s: %s"), *Read.ToolName, *Warning));
			}
			ReadBacks.Add(FReadBack{Read.ToolName, MoveTemp(Text)});
		}
		return *this;
	}

	TSharedRef<FJsonObject> FToolResult::ToJson() const
	{
		TSharedRef<FJsonObject> Json = MakeShared<FJsonObject>();
		Json->SetBoolField(TEXT("success"), !HasFailed());
		Json->SetArrayField(TEXT("errors"), ToJsonStrings(ErrorMessages));
		Json->SetArrayField(TEXT("warnings"), ToJsonStrings(WarningMessages));
		Json->SetArrayField(TEXT("messages"), ToJsonStrings(SuccessMessages));
		Json->SetObjectField(TEXT("data"), Data);

		TArray<TSharedPtr<FJsonValue>> ReadBackValues;
		ReadBackValues.Reserve(ReadBacks.Num());
		for (const FReadBack& ReadBack : ReadBacks)
		{
			TSharedRef<FJsonObject> Entry = MakeShared<FJsonObject>();
			Entry->SetStringField(TEXT("tool"), ReadBack.ToolName);
			Entry->SetField(TEXT("result"), ReadBackValue(ReadBack.Text));
			ReadBackValues.Add(MakeShared<FJsonValueObject>(Entry));
		}
		Json->SetArrayField(TEXT("read_backs"), MoveTemp(ReadBackValues));
		return Json;
	}
}
