#pragma once

#include "CoreMinimal.h"
#include "Containers/Array.h"
#include "Containers/Map.h"
#include "Containers/Set.h"
#include "Containers/UnrealString.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraphToken.h"
#include "Logging/TokenizedMessage.h"
#include "Misc/CString.h"
#include "Templates/SharedPointer.h"
#include "UObject/NameTypes.h"
#include "UObject/WeakObjectPtr.h"

class FField;
class UBlueprint;
class UObject;

/** Leads objects and pins made while compiling (expanded nodes, copies) back to the ones the author placed. */
class FBacktrackMap
{
public:
	UNREALED_API void NotifyIntermediateObjectCreation(UObject* NewObject, UObject* SourceObject);
	UNREALED_API void NotifyIntermediatePinCreation(UEdGraphPin* NewPin, UEdGraphPin* SourcePin);

	UNREALED_API UObject* FindSourceObject(UObject* PossiblyDuplicatedObject);
	UNREALED_API const UObject* FindSourceObject(const UObject* PossiblyDuplicatedObject) const;
	UNREALED_API UEdGraphPin* FindSourcePin(UEdGraphPin* PossiblyDuplicatedPin);
	UNREALED_API const UEdGraphPin* FindSourcePin(const UEdGraphPin* PossiblyDuplicatedPin) const;

protected:
	TMap<const UObject*, UObject*> SourceBacktrackMap;
	TMap<UEdGraphPin*, UEdGraphPin*> PinSourceBacktrackMap;
};

/**
 * The compiler's output: errors, warnings and notes, each a tokenized message whose "@@" markers were
 * replaced, in order, by tokens naming the nodes, pins, objects or fields passed after the format.
 */
class FCompilerResultsLog
{
public:
	TArray<TSharedRef<FTokenizedMessage>> Messages;

	int32 NumErrors;
	int32 NumWarnings;

	/** Keeps messages out of the process log. */
	bool bSilentMode;
	/** Writes only notes to the process log. */
	bool bLogInfoOnly;
	/** Marks the nodes a message names (bHasCompilerMessage, ErrorType, ErrorMsg). */
	bool bAnnotateMentionedNodes;
	bool bLogDetailedResults;
	int EventDisplayThresholdMs;

	/** The nodes that were marked with a message. */
	TSet<TWeakObjectPtr<UEdGraphNode>> AnnotatedNodes;

	UNREALED_API FCompilerResultsLog(bool bIsCompatibleWithEvents = true);
	UNREALED_API virtual ~FCompilerResultsLog();

	static FName GetLogName() { return Name; }

	void SetSourcePath(const FString& InSourcePath) { SourcePath = InSourcePath; }
	const FString& GetSourcePath() const { return SourcePath; }

	template <typename... ArgTypes>
	TSharedRef<FTokenizedMessage> Error(const TCHAR* Format, ArgTypes... Args)
	{
		++NumErrors;
		TSharedRef<FTokenizedMessage> Line = FTokenizedMessage::Create(EMessageSeverity::Error);
		InternalLogMessage(NAME_None, Format, Line, Args...);
		return Line;
	}

	template <typename... ArgTypes>
	TSharedRef<FTokenizedMessage> Warning(const TCHAR* Format, ArgTypes... Args)
	{
		++NumWarnings;
		TSharedRef<FTokenizedMessage> Line = FTokenizedMessage::Create(EMessageSeverity::Warning);
		InternalLogMessage(NAME_None, Format, Line, Args...);
		return Line;
	}

	/** A warning that projects may switch off by its identifier. */
	template <typename... ArgTypes>
	void Warning(FName ID, const TCHAR* Format, ArgTypes... Args)
	{
		if (!IsMessageEnabled(ID))
		{
			return;
		}
		++NumWarnings;
		TSharedRef<FTokenizedMessage> Line = FTokenizedMessage::Create(EMessageSeverity::Warning);
		InternalLogMessage(ID, Format, Line, Args...);
	}

	template <typename... ArgTypes>
	TSharedRef<FTokenizedMessage> Note(const TCHAR* Format, ArgTypes... Args)
	{
		TSharedRef<FTokenizedMessage> Line = FTokenizedMessage::Create(EMessageSeverity::Info);
		InternalLogMessage(NAME_None, Format, Line, Args...);
		return Line;
	}

	/** Messages held back for a node until CommitPotentialMessages decides it really is at fault. */
	template <typename... ArgTypes>
	TSharedRef<FTokenizedMessage> StorePotentialError(const UEdGraphNode* Source, const TCHAR* Format, ArgTypes... Args)
	{
		return StorePotential(EMessageSeverity::Error, Source, Format, Args...);
	}

	template <typename... ArgTypes>
	TSharedRef<FTokenizedMessage> StorePotentialWarning(const UEdGraphNode* Source, const TCHAR* Format, ArgTypes... Args)
	{
		return StorePotential(EMessageSeverity::Warning, Source, Format, Args...);
	}

	template <typename... ArgTypes>
	TSharedRef<FTokenizedMessage> StorePotentialNote(const UEdGraphNode* Source, const TCHAR* Format, ArgTypes... Args)
	{
		return StorePotential(EMessageSeverity::Info, Source, Format, Args...);
	}

	/** Adds a message built elsewhere, counting it by its severity. */
	UNREALED_API void AddTokenizedMessage(TSharedRef<FTokenizedMessage> InMessage);

	/** Logs the messages stored for Source; false when there were none. */
	UNREALED_API bool CommitPotentialMessages(UEdGraphNode* Source);

	UNREALED_API void NotifyIntermediateObjectCreation(UObject* NewObject, UObject* SourceObject);
	UNREALED_API void NotifyIntermediatePinCreation(UEdGraphPin* NewPin, UEdGraphPin* SourcePin);

	UNREALED_API UObject* FindSourceObject(UObject* PossiblyDuplicatedObject);
	UNREALED_API const UObject* FindSourceObject(const UObject* PossiblyDuplicatedObject) const;
	UNREALED_API UEdGraphPin* FindSourcePin(UEdGraphPin* PossiblyDuplicatedPin);
	UNREALED_API const UEdGraphPin* FindSourcePin(const UEdGraphPin* PossiblyDuplicatedPin) const;

	template <typename T>
	T* FindSourceObjectTypeChecked(UObject* PossiblyDuplicatedObject)
	{
		return CastChecked<T>(FindSourceObject(PossiblyDuplicatedObject));
	}

	/** Copies the other log's messages (those not already here), with their counts and node marks. */
	UNREALED_API void Append(const FCompilerResultsLog& Other, bool bWriteToSystemLog = false);

	/** Timing scopes; ending the outermost one writes the summary note. */
	UNREALED_API void BeginEvent(const TCHAR* InName);
	UNREALED_API void EndEvent();

	void SetSilentMode(bool bValue) { bSilentMode = bValue; }

	/** The nodes named by a message's tokens, each once. */
	UNREALED_API static void GetNodesFromTokens(const TArray<TSharedRef<IMessageToken>>& MessageTokens, TArray<UEdGraphNode*>& OutOwnerNodes);

protected:
	void Tokenize(const TCHAR* Text, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes)
	{
		OutMessage.AddToken(FTextToken::Create(FText::FromString(FString(Text))));
	}

	template <typename T, typename... ArgTypes>
	void Tokenize(const TCHAR* Format, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes, T First, ArgTypes... Rest)
	{
		const TCHAR* Marker = FCString::Strstr(Format, TEXT("@@"));
		if (!Marker)
		{
			// More arguments than markers: the text stands as written.
			Tokenize(Format, OutMessage, OutSourceNodes);
			return;
		}
		if (Marker != Format)
		{
			OutMessage.AddToken(FTextToken::Create(FText::FromString(FString::ConstructFromPtrSize(Format, int32(Marker - Format)))));
		}
		FEdGraphToken_Create(First, OutMessage, OutSourceNodes);
		const TCHAR* Rest_ = Marker + 2;
		if (*Rest_)
		{
			Tokenize(Rest_, OutMessage, OutSourceNodes, Rest...);
		}
	}

	template <typename... ArgTypes>
	void InternalLogMessage(FName MessageID, const TCHAR* Format, const TSharedRef<FTokenizedMessage>& Message, ArgTypes... Args)
	{
		TArray<UEdGraphNode*> SourceNodes;
		Tokenize(Format ? Format : TEXT(""), *Message, SourceNodes, Args...);
		InternalLogMessage(MessageID, Message, SourceNodes);
	}

	template <typename... ArgTypes>
	TSharedRef<FTokenizedMessage> StorePotential(EMessageSeverity::Type Severity, const UEdGraphNode* Source, const TCHAR* Format, ArgTypes... Args)
	{
		TSharedRef<FTokenizedMessage> Line = FTokenizedMessage::Create(Severity);
		TArray<UEdGraphNode*> SourceNodes;
		Tokenize(Format ? Format : TEXT(""), *Line, SourceNodes, Args...);
		PotentialMessages.FindOrAdd(TWeakObjectPtr<const UEdGraphNode>(Source)).Add(Line);
		return Line;
	}

	UNREALED_API void AnnotateNode(const TArray<UEdGraphNode*>& Nodes, TSharedRef<FTokenizedMessage> LogLine);
	UNREALED_API void InternalLogSummary();
	UNREALED_API void InternalLogMessage(FName MessageID, const TSharedRef<FTokenizedMessage>& Message, const TArray<UEdGraphNode*>& SourceNodes);

	UNREALED_API void FEdGraphToken_Create(const UObject* InObject, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes);
	UNREALED_API void FEdGraphToken_Create(const UEdGraphPin* InPin, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes);
	UNREALED_API void FEdGraphToken_Create(const TCHAR* String, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes);
	UNREALED_API void FEdGraphToken_Create(const FField* InField, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes);

	void IncrementErrorCount() { ++NumErrors; }
	void IncrementWarningCount() { ++NumWarnings; }
	UNREALED_API bool IsMessageEnabled(FName ID);

	FBacktrackMap SourceBacktrackMap;
	FString SourcePath;

private:
	struct FCompilerEvent
	{
		FString Name;
		uint32 Counter = 0;
		double StartTime = 0.0;
		double FinishTime = 0.0;
		TSharedPtr<FCompilerEvent> ParentEventScope;
		TArray<TSharedRef<FCompilerEvent>> ChildEvents;
	};

	void AddChildEvent(TSharedPtr<FCompilerEvent>& ParentEventScope, TSharedRef<FCompilerEvent>& ChildEventScope);

	TSharedPtr<FCompilerEvent> CurrentEventScope;
	TMap<TWeakObjectPtr<const UEdGraphNode>, TArray<TSharedRef<FTokenizedMessage>>> PotentialMessages;

	UNREALED_API static const FName Name;
};
