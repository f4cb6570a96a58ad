#pragma once

#include "CoreMinimal.h"
#include "ToolCommand.h"
#include "UObject/WeakObjectPtr.h"

class FJsonObject;
class UObject;

namespace Calvorn
{
	/**
	 * What one tool call reports: error, warning and success messages in the order they were raised,
	 * a data object that the operation extends as it goes, and the read-backs of what it changed.
	 *
	 * Messages follow one convention: an error ends the call; a warning beginning "[Failure] " is one
	 * failed item of a batch; other warnings are tolerated anomalies; one success message closes the
	 * call. A client counts a call as failed when it holds an error or a warning containing
	 * "[Failure]" (HasFailed), which is what "success" says in ToJson.
	 *
	 * Copies share the data object, as any copy of a shared pointer would.
	 */
	class CALVORNCORE_API FToolResult
	{
	public:
		/** One read performed by FinalizeModifications: the read tool and the text it returned. */
		struct FReadBack
		{
			FString ToolName;
			FString Text;
		};

		FToolResult();
		explicit FToolResult(const FToolCommand& Command);

		const FString& GetRequestId() const { return RequestId; }
		const FString& GetToolName() const { return ToolName; }

		// ---- Messages -----------------------------------------------------------------------

		FToolResult& AddErrorMessage(const FString& Message);
		FToolResult& AddWarningMessage(const FString& Message);
		FToolResult& AddSuccessMessage(const FString& Message);

		const TArray<FString>& GetErrorMessages() const { return ErrorMessages; }
		const TArray<FString>& GetWarningMessages() const { return WarningMessages; }
		const TArray<FString>& GetSuccessMessages() const { return SuccessMessages; }

		/** True while no error message was added. Warnings, "[Failure]" ones included, do not change it. */
		bool WasSuccessful() const { return ErrorMessages.Num() == 0; }

		/** The client's reading: an error, or a warning containing "[Failure]" in any case. */
		bool HasFailed() const;

		// ---- Data ---------------------------------------------------------------------------

		FToolResult& SetData(const FString& Key, const FString& Value);
		FToolResult& SetData(const FString& Key, const TSharedPtr<FJsonObject>& Value);

		/** The data object; never null. Later phases of an operation read and extend it in place. */
		const TSharedPtr<FJsonObject>& GetDatas() const { return Data; }

		// ---- Modifications and their read-backs ---------------------------------------------

		/** Queues one read (tool and parameters) to run at FinalizeModifications. */
		FToolResult& TrackModification(const FString& ReadToolName, const TSharedPtr<FJsonObject>& ReadParameters);

		/** Notes an object this call changed. */
		FToolResult& AddModifiedObjects(TWeakObjectPtr<UObject> Object);

		/**
		 * Runs the queued reads through FModificationReadRegistry, in the order they were tracked, and
		 * keeps what each returns as a read-back. A read tool that is not registered is skipped with a
		 * warning. A read runs against a result of its own: its errors and warnings come back here as
		 * warnings naming the read, so a failed read-back never turns a change that was made into a
		 * failed call. The queue is emptied, so finalising twice does not read twice.
		 */
		FToolResult& FinalizeModifications();

		const TArray<FReadBack>& GetReadBacks() const { return ReadBacks; }
		const TArray<TWeakObjectPtr<UObject>>& GetModifiedObjects() const { return ModifiedObjects; }
		/** Reads tracked but not finalised yet. */
		int32 GetPendingModificationCount() const { return PendingReads.Num(); }

		// ---- For clients --------------------------------------------------------------------

		/**
		 * The result as a client sees it, keys in this order: "success" (bool, !HasFailed()),
		 * "errors", "warnings", "messages" (the success messages), "data" (the data object as the
		 * operation set it: strings stay strings), "read_backs" (array of {"tool", "result"}, the
		 * result being the read's JSON, or its raw text when that is not JSON).
		 */
		TSharedRef<FJsonObject> ToJson() const;

	private:
		struct FPendingRead
		{
			FString ToolName;
			TSharedPtr<FJsonObject> Parameters;
		};

		FString RequestId;
		FString ToolName;
		TArray<FString> ErrorMessages;
		TArray<FString> WarningMessages;
		TArray<FString> SuccessMessages;
		TSharedPtr<FJsonObject> Data;
		TArray<FPendingRead> PendingReads;
		TArray<FReadBack> ReadBacks;
		TArray<TWeakObjectPtr<UObject>> ModifiedObjects;
	};

	/** Fired by a tool exactly once when its run is over, with the completed result. */
	DECLARE_DELEGATE_OneParam(FOnToolCompleted, FToolResult&);
}
