#include "EdGraphToken.h"

#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Templates/Casts.h"
#include "UObject/Class.h"
#include "UObject/Field.h"

namespace
{
	/** What a message calls an object: nodes by their list title, Blueprint classes by their Blueprint's name. */
	FText DescribeObject(const UObject* Object)
	{
		if (const UEdGraphNode* Node = Cast<UEdGraphNode>(Object))
		{
			return Node->GetNodeTitle(ENodeTitleType::ListView);
		}
		if (const UClass* Class = Cast<UClass>(Object))
		{
			if (Class->ClassGeneratedBy)
			{
				return FText::FromString(Class->ClassGeneratedBy->GetName());
			}
			return Class->GetDisplayNameText();
		}
		if (const UField* Field = Cast<UField>(Object))
		{
			return Field->GetDisplayNameText();
		}
		return FText::FromString(Object->GetName());
	}
}

FEdGraphToken::FEdGraphToken(const UObject* InObject, const UEdGraphPin* InPin)
	: ObjectBeingReferenced(InObject)
{
	if (InPin)
	{
		PinOwner = InPin->GetOwningNodeUnchecked();
		PinGuid = InPin->PinId;
		CachedText = InPin->GetDisplayName();
		if (CachedText.IsEmpty())
		{
			CachedText = FText::FromString(TEXT("<Unnamed>"));
		}
	}
	else if (InObject)
	{
		CachedText = DescribeObject(InObject);
	}
	else
	{
		CachedText = FText::FromString(TEXT("<None>"));
	}
}

const UObject* FEdGraphToken::GetGraphObject() const
{
	return ObjectBeingReferenced.Get();
}

const UEdGraphPin* FEdGraphToken::GetPin() const
{
	const UEdGraphNode* Owner = PinOwner.Get();
	return Owner ? Owner->FindPinById(PinGuid) : nullptr;
}

void FEdGraphToken::CreateInternal(const UObject* InObject, FCompilerResultsLog* Log, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes, const UEdGraphPin* Pin)
{
	const UObject* SourceObject = Log ? Log->FindSourceObject(InObject) : InObject;
	const UEdGraphPin* SourcePin = (Pin && Log) ? Log->FindSourcePin(Pin) : Pin;
	OutMessage.AddToken(TSharedRef<IMessageToken>(new FEdGraphToken(SourceObject, SourcePin)));
	if (UEdGraphNode* SourceNode = const_cast<UEdGraphNode*>(Cast<UEdGraphNode>(SourceObject)))
	{
		OutSourceNodes.Add(SourceNode);
	}
	if (SourceObject && !OutMessage.GetMessageLink().IsValid())
	{
		OutMessage.SetMessageLink(TSharedRef<IMessageToken>(new FEdGraphToken(SourceObject, nullptr)));
	}
}

void FEdGraphToken::Create(const UObject* InObject, FCompilerResultsLog* Log, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes)
{
	CreateInternal(InObject, Log, OutMessage, OutSourceNodes, nullptr);
}

void FEdGraphToken::Create(const UEdGraphPin* InPin, FCompilerResultsLog* Log, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes)
{
	// A pin without a node names nothing: its marker is dropped, as the editor does.
	if (InPin && InPin->GetOwningNodeUnchecked())
	{
		CreateInternal(InPin->GetOwningNodeUnchecked(), Log, OutMessage, OutSourceNodes, InPin);
	}
}

void FEdGraphToken::Create(const TCHAR* String, FCompilerResultsLog* Log, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes)
{
	OutMessage.AddToken(FTextToken::Create(FText::FromString(FString(String ? String : TEXT("")))));
}

void FEdGraphToken::Create(const FField* InField, FCompilerResultsLog* Log, FTokenizedMessage& OutMessage, TArray<UEdGraphNode*>& OutSourceNodes)
{
	const FText Text = InField ? InField->GetDisplayNameText() : FText::FromString(TEXT("<None>"));
	OutMessage.AddToken(FTextToken::Create(Text));
}
