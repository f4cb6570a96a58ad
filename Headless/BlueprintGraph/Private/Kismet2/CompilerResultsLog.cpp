#include "Kismet2/CompilerResultsLog.h"

#include "HAL/PlatformTime.h"
#include "Templates/Casts.h"

const FName FCompilerResultsLog::Name(TEXT("CompilerResultsLog"));

// FBacktrackMap

void FBacktrackMap::NotifyIntermediateObjectCreation(UObject* NewObject, UObject* SourceObject)
{
	// Always record the author's object, however many copies lie between.
	while (UObject** Earlier = SourceBacktrackMap.Find(SourceObject))
	{
		SourceObject = *Earlier;
	}
	SourceBacktrackMap.Add(NewObject, SourceObject);
}

void FBacktrackMap::NotifyIntermediatePinCreation(UEdGraphPin* NewPin, UEdGraphPin* SourcePin)
{
	while (UEdGraphPin** Earlier = PinSourceBacktrackMap.Find(SourcePin))
	{
		SourcePin = *Earlier;
	}
	PinSourceBacktrackMap.Add(NewPin, SourcePin);
}

UObject* FBacktrackMap::FindSourceObject(UObject* PossiblyDuplicatedObject)
{
	UObject** Found = SourceBacktrackMap.Find(PossiblyDuplicatedObject);
	return Found ? *Found : PossiblyDuplicatedObject;
}

const UObject* FBacktrackMap::FindSourceObject(const UObject* PossiblyDuplicatedObject) const
{
	UObject* const* Found = SourceBacktrackMap.Find(PossiblyDuplicatedObject);
	return Found ? *Found : PossiblyDuplicatedObject;
}

UEdGraphPin* FBacktrackMap::FindSourcePin(UEdGraphPin* PossiblyDuplicatedPin)
{
	if (UEdGraphPin** Found = PinSourceBacktrackMap.Find(PossiblyDuplicatedPin))
	{
		return *Found;
	}
	// A pin of a copied node: the source node's pin with the same id.
	if (PossiblyDuplicatedPin && PossiblyDuplicatedPin->GetOwningNodeUnchecked())
	{
		if (UEdGraphNode* SourceNode = Cast<UEdGraphNode>(FindSourceObject(PossiblyDuplicatedPin->GetOwningNodeUnchecked())))
		{
			if (UEdGraphPin* SamePin = SourceNode->FindPinById(PossiblyDuplicatedPin->PinId))
			{
				return SamePin;
			}
		}
	}
	return PossiblyDuplicatedPin;
}

const UEdGraphPin* FBacktrackMap::FindSourcePin(const UEdGraphPin* PossiblyDuplicatedPin) const
{
	return const_cast<FBacktrackMap*>(this)->FindSourcePin(const_cast<UEdGraphPin*>(PossiblyDuplicatedPin));
}

// FCompilerResultsLog

FCompilerResultsLog::FCompilerResultsLog(bool bIsCompatibleWithEvents)
	: NumErrors(0)
	, NumWarnings(0)
	, bSilentMode(false)
	, bLogInfoOnly(false)
	, bAnnotateMentionedNodes(true)
	, bLogDetailedResults(false)
	, EventDisplayThresholdMs(0)
{
}

FCompilerResultsLog::~FCompilerResultsLog() = default;

void FCompilerResultsLog::AddTokenizedMessage(TSharedRef<FTokenizedMessage> InMessage)
{
	switch (InMessage->GetSeverity())
	{
	case EMessageSeverity::Error:
		++NumErrors;
		break;
	case EMessageSeverity::Warning:
	case EMessageSeverity::PerformanceWarning:
		++NumWarnings;
		break;
	default:
		break;
	}
	Messages.Add(InMessage);
}

bool FCompilerResultsLog::CommitPotentialMessages(UEdGraphNode* Source)
{
	TArray<TSharedRef<FTokenizedMessage>> Stored;
	if (!PotentialMessages.RemoveAndCopyValue(TWeakObjectPtr<const UEdGraphNode>(Source), Stored))
	{
		return false;
	}
	for (const TSharedRef<FTokenizedMessage>& Message : Stored)
	{
		if (Message->GetSeverity() == EMessageSeverity::Error)
		{
			++NumErrors;
		}
		else if (Message->GetSeverity() == EMessageSeverity::Warning)
		{
			++NumWarnings;
		}
		TArray<UEdGraphNode*> Nodes;
		GetNodesFromTokens(Message->GetMessageTokens(), Nodes);
		if (Source)
		{
			Nodes.Add(Source);
		}
		InternalLogMessage(Message->GetIdentifier(), Message, Nodes);
	}
	return true;
}

void FCompilerResultsLog::NotifyIntermediateObjectCreation(UObject* NewObject, UObject* SourceObject)
{
	SourceBacktrackMap.NotifyIntermediateObjectCreation(NewObject, SourceObject);
}

void FCompilerResultsLog::NotifyIntermediatePinCreation(UEdGraphPin* NewPin, UEdGraphPin* SourcePin)
{
	SourceBacktrackMap.NotifyIntermediatePinCreation(NewPin, SourcePin);
}

UObject* FCompilerResultsLog::FindSourceObject(UObject* PossiblyDuplicatedObject)
{
	return SourceBacktrackMap.FindSourceObject(PossiblyDuplicatedObject);
}

const UObject* FCompilerResultsLog::FindSourceObject(const UObject* PossiblyDuplicatedObject) const
{
	return SourceBacktrackMap.FindSourceObject(PossiblyDuplicatedObject);
}

UEdGraphPin* FCompilerResultsLog::FindSourcePin(UEdGraphPin* PossiblyDuplicatedPin)
{
	return SourceBacktrackMap.FindSourcePin(PossiblyDuplicatedPin);
}

const UEdGraphPin* FCompilerResultsLog::FindSourcePin(const UEdGraphPin* PossiblyDuplicatedPin) const
{
	return SourceBacktrackMap.FindSourcePin(PossiblyDuplicatedPin);
}

void FCompilerResultsLog::GetNodesFromTokens(const TArray<TSharedRef<IMessageToken>>& MessageTokens, TArray<UEdGraphNode*>& OutOwnerNodes)
{
	for (const TSharedRef<IMessageToken>& Token : MessageTokens)
	{
		if (Token->GetType() != EMessageToken::EdGraph)
		{
			continue;
		}
		const FEdGraphToken& GraphToken = static_cast<const FEdGraphToken&>(Token.Get());
		UEdGraphNode* Owner = const_cast<UEdGraphNode*>(Cast<UEdGraphNode>(GraphToken.GetGraphObject()));
		if (!Owner)
		{
			if (const UEdGraphPin* Pin = GraphToken.GetPin())
			{
				Owner = Pin->GetOwningNodeUnchecked();
			}
		}
		if (Owner)
		{
			OutOwnerNodes.AddUnique(Owner);
		}
	}
}

void FCompilerResultsLog::Append(const FCompilerResultsLog& Other, bool bWriteToSystemLog)
{
	for (const TSharedRef<FTokenizedMessage>& Message : Other.Messages)
	{
		if (Messages.Contains(Message))
		{
			continue;
		}
		if (Message->GetSeverity() == EMessageSeverity::Error)
		{
			++NumErrors;
		}
		else if (Message->GetSeverity() == EMessageSeverity::Warning)
		{
			++NumWarnings;
		}
		TArray<UEdGraphNode*> Nodes;
		GetNodesFromTokens(Message->GetMessageTokens(), Nodes);
		if (bWriteToSystemLog)
		{
			InternalLogMessage(Message->GetIdentifier(), Message, Nodes);
		}
		else
		{
			Messages.Add(Message);
			AnnotateNode(Nodes, Message);
		}
	}
}

void FCompilerResultsLog::BeginEvent(const TCHAR* InName)
{
	TSharedRef<FCompilerEvent> Event = MakeShared<FCompilerEvent>();
	Event->Name = InName ? InName : TEXT("");
	Event->ParentEventScope = CurrentEventScope;
	Event->StartTime = FPlatformTime::Seconds();
	CurrentEventScope = Event;
}

void FCompilerResultsLog::EndEvent()
{
	if (!CurrentEventScope.IsValid())
	{
		return;
	}
	CurrentEventScope->FinishTime = FPlatformTime::Seconds();
	TSharedPtr<FCompilerEvent> Parent = CurrentEventScope->ParentEventScope;
	if (Parent.IsValid())
	{
		TSharedRef<FCompilerEvent> Child = CurrentEventScope.ToSharedRef();
		AddChildEvent(Parent, Child);
		CurrentEventScope = Parent;
	}
	else
	{
		InternalLogSummary();
		CurrentEventScope.Reset();
	}
}

void FCompilerResultsLog::AddChildEvent(TSharedPtr<FCompilerEvent>& ParentEventScope, TSharedRef<FCompilerEvent>& ChildEventScope)
{
	// Repeated scopes of one name are folded into one entry that counts them.
	for (int32 Index = ParentEventScope->ChildEvents.Num() - 1; Index >= 0; --Index)
	{
		TSharedRef<FCompilerEvent>& Existing = ParentEventScope->ChildEvents[Index];
		if (Existing->Name == ChildEventScope->Name)
		{
			Existing->Counter += 1;
			Existing->FinishTime += ChildEventScope->FinishTime - ChildEventScope->StartTime;
			return;
		}
	}
	ParentEventScope->ChildEvents.Add(ChildEventScope);
}

void FCompilerResultsLog::InternalLogSummary()
{
	if (!CurrentEventScope.IsValid())
	{
		return;
	}
	const int32 ElapsedMs = int32((CurrentEventScope->FinishTime - CurrentEventScope->StartTime) * 1000.0);
	FString ObjectName = SourcePath;
	int32 Dot = INDEX_NONE;
	if (ObjectName.FindLastChar(TEXT('.'), Dot))
	{
		ObjectName.RightChopInline(Dot + 1);
	}
	if (NumErrors > 0)
	{
		Note(*FString::Printf(TEXT("Compile of %s failed. %d Fatal Issue(s) %d Warning(s) [in %d ms] (%s)"), *ObjectName, NumErrors, NumWarnings, ElapsedMs, *SourcePath));
	}
	else if (NumWarnings > 0)
	{
		Note(*FString::Printf(TEXT("Compile of %s successful, but with %d Warning(s) [in %d ms] (%s)"), *ObjectName, NumWarnings, ElapsedMs, *SourcePath));
	}
	else
	{
		Note(*FString::Printf(TEXT("Compile of %s successful! [in %d ms] (%s)"), *ObjectName, ElapsedMs, *SourcePath));
	}
}

void FCompilerResultsLog::InternalLogMessage(FName MessageID, const TSharedRef<FTokenizedMessage>& Message, const TArray<UEdGraphNode*>& SourceNodes)
{
	Messages.Add(Message);
	AnnotateNode(SourceNodes, Message);
	Message->SetIdentifier(MessageID);
}

void FCompilerResultsLog::AnnotateNode(const TArray<UEdGraphNode*>& Nodes, TSharedRef<FTokenizedMessage> LogLine)
{
	if (!bAnnotateMentionedNodes)
	{
		return;
	}
	for (UEdGraphNode* Node : Nodes)
	{
		if (!Node)
		{
			continue;
		}
		// A node shows its most severe message; messages of equal severity are listed one per line.
		bool bUpdate = true;
		if (Node->bHasCompilerMessage)
		{
			bUpdate = int32(LogLine->GetSeverity()) <= Node->ErrorType;
		}
		else
		{
			Node->ErrorMsg.Empty();
		}
		if (!bUpdate)
		{
			continue;
		}
		Node->ErrorType = int32(LogLine->GetSeverity());
		Node->bHasCompilerMessage = true;
		const FString Text = LogLine->ToText().ToString();
		Node->ErrorMsg = Node->ErrorMsg.IsEmpty() ? Text : Node->ErrorMsg + TEXT("\n") + Text;
		AnnotatedNodes.Add(Node);
	}
}

bool FCompilerResultsLog::IsMessageEnabled(FName ID)
{
	// No project switches messages off headless.
	return true;
}

void FCompilerResultsLog::FEdGraphToken_Create(const UObject* InObject, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes)
{
	FEdGraphToken::Create(InObject, this, OutMessage, OutSourceNodes);
}

void FCompilerResultsLog::FEdGraphToken_Create(const UEdGraphPin* InPin, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes)
{
	FEdGraphToken::Create(InPin, this, OutMessage, OutSourceNodes);
}

void FCompilerResultsLog::FEdGraphToken_Create(const TCHAR* String, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes)
{
	FEdGraphToken::Create(String, this, OutMessage, OutSourceNodes);
}

void FCompilerResultsLog::FEdGraphToken_Create(const FField* InField, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes)
{
	FEdGraphToken::Create(InField, this, OutMessage, OutSourceNodes);
}
