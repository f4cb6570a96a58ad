#include "Populate/PinConnectionUtils.h"

#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraph/EdGraphSchema.h"
#include "EdGraphSchema_K2.h"
#include "K2Node.h"
#include "Populate/PopulateTelemetry.h"
#include "Templates/Casts.h"
#include "ToolResult.h"

namespace
{
	/** The first pin of the node whose name is Name (without case) and whose direction is Direction. */
	UEdGraphPin* FindPinByName(const UEdGraphNode& Node, const FString& Name, EEdGraphPinDirection Direction)
	{
		for (UEdGraphPin* Pin : Node.Pins)
		{
			if (Pin && Pin->Direction == Direction && Pin->PinName.ToString().Equals(Name, ESearchCase::IgnoreCase))
			{
				return Pin;
			}
		}
		return nullptr;
	}

	EEdGraphPinDirection OppositeDirection(EEdGraphPinDirection Direction)
	{
		return Direction == EGPD_Input ? EGPD_Output : EGPD_Input;
	}

	FString FullTitle(const UEdGraphNode* Node)
	{
		return Node ? Node->GetNodeTitle(ENodeTitleType::FullTitle).ToString() : FString();
	}

	bool IsPureNode(const UEdGraphNode* Node)
	{
		const UK2Node* K2Node = Cast<UK2Node>(Node);
		return K2Node && K2Node->IsNodePure();
	}

	bool IsRefusal(const FPinConnectionResponse& Response)
	{
		return Response.Response == CONNECT_RESPONSE_DISALLOW || Response.Response == CONNECT_RESPONSE_MAX;
	}

	/** A refused connection counts twice in the telemetry (as a validation and as a connection failure) and warns once. */
	void ReportSchemaFailure(Calvorn::FToolResult& Result, const FString& Text, const UEdGraphNode* SourceNode, const FString& SourcePinName, const UEdGraphNode* TargetNode, const FString& TargetPinName, const FString& Reason)
	{
		FPopulateTelemetry::RecordValidationFailure(Result, Text);
		FPopulateTelemetry::RecordConnectionFailure(Result, FullTitle(SourceNode), SourcePinName, FullTitle(TargetNode), TargetPinName, Reason);
		Result.AddWarningMessage(Text);
	}
}

const TMap<FString, TArray<FString>>& FPinConnectionUtils::GetPinAliases()
{
	// The words a client reads in the editor, mapped to the names the nodes hold.
	static const TMap<FString, TArray<FString>> Aliases = []()
	{
		TMap<FString, TArray<FString>> Table;
		Table.Add(TEXT("target"), {UEdGraphSchema_K2::PN_Self.ToString()});
		Table.Add(TEXT("true"), {UEdGraphSchema_K2::PN_Then.ToString()});
		Table.Add(TEXT("false"), {UEdGraphSchema_K2::PN_Else.ToString()});
		Table.Add(TEXT("execute"), {UEdGraphSchema_K2::PN_Execute.ToString()});
		Table.Add(TEXT("completed"), {UEdGraphSchema_K2::PN_Completed.ToString()});
		Table.Add(TEXT("return value"), {UEdGraphSchema_K2::PN_ReturnValue.ToString()});
		Table.Add(TEXT("world context object"), {TEXT("WorldContextObject"), TEXT("WidgetContextObject"), TEXT("Context"), TEXT("WorldContext")});
		return Table;
	}();
	return Aliases;
}

UEdGraphPin* FPinConnectionUtils::FindPinFuzzy(UEdGraphNode* Node, const FString& PinName, EEdGraphPinDirection Direction, Calvorn::FToolResult* Result)
{
	if (!Node || PinName.IsEmpty())
	{
		return nullptr;
	}

	// An alias wins over a pin that happens to carry the client's word itself: "true" on a branch means its then pin.
	if (const TArray<FString>* Candidates = GetPinAliases().Find(PinName.ToLower()))
	{
		for (const FString& Candidate : *Candidates)
		{
			if (UEdGraphPin* Pin = FindPinByName(*Node, Candidate, Direction))
			{
				return Pin;
			}
		}
	}

	if (UEdGraphPin* Pin = FindPinByName(*Node, PinName, Direction))
	{
		return Pin;
	}

	// A client that names an output where an input was expected still gets the pin; the schema judges the wire.
	if (UEdGraphPin* Pin = FindPinByName(*Node, PinName, OppositeDirection(Direction)))
	{
		if (Result)
		{
			FPopulateTelemetry::IncrementPinDirectionFallbacks(*Result);
		}
		return Pin;
	}
	return nullptr;
}

bool FPinConnectionUtils::SetPinValue(UEdGraphPin* Pin, const FString& Value, Calvorn::FToolResult& Result)
{
	if (!Pin || Value.IsEmpty())
	{
		return false;
	}
	if (Pin->LinkedTo.Num() > 0)
	{
		Result.AddWarningMessage(FString::Printf(TEXT("Failed to set value of pin '%s' to '%s'. Pin is connected to another pin. Break the connection if you want to set a manual value."), *Pin->PinName.ToString(), *Value));
		return false;
	}

	const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
	const FString SavedValue = Pin->DefaultValue;

	// The schema keeps the former value when it refuses a new one and says nothing; asking it about the
	// requested value first is what lets a refusal be reported instead of passing for success.
	FString TypedValue;
	TObjectPtr<UObject> TypedObject;
	FText TypedText;
	Schema->GetPinDefaultValuesFromString(Pin->PinType, Pin->GetOwningNodeUnchecked(), Value, TypedValue, TypedObject, TypedText);
	const FString RequestedRefusal = Schema->IsPinDefaultValid(Pin, TypedValue, TypedObject, TypedText);

	Schema->TrySetDefaultValue(*Pin, Value, true);

	FString Refusal = Schema->IsCurrentPinDefaultValid(Pin);
	if (Refusal.IsEmpty())
	{
		Refusal = RequestedRefusal;
	}
	if (Refusal.IsEmpty())
	{
		return true;
	}

	Schema->TrySetDefaultValue(*Pin, SavedValue, true);
	Result.AddWarningMessage(Refusal);
	if (Refusal.Contains(TEXT("must have an input wired into"), ESearchCase::IgnoreCase))
	{
		Result.AddWarningMessage(TEXT("You can use Make literal Name node to set the value and connect it to this pin"));
	}
	return false;
}

bool FPinConnectionUtils::ConnectPins(UEdGraph* Graph, UEdGraphNode* SourceNode, const FString& SourcePinName, UEdGraphNode* TargetNode, const FString& TargetPinName, Calvorn::FToolResult& Result)
{
	if (!Graph)
	{
		Result.AddErrorMessage(TEXT("Graph is null"));
		return false;
	}

	UEdGraphPin* SourcePin = FindPinFuzzy(SourceNode, SourcePinName, EGPD_Output, &Result);
	if (!SourcePin)
	{
		Result.AddWarningMessage(FString::Printf(TEXT("[Failure] Source pin '%s' not found on node '%s'"), *SourcePinName, *FullTitle(SourceNode)));
		return false;
	}
	UEdGraphPin* TargetPin = FindPinFuzzy(TargetNode, TargetPinName, EGPD_Input, &Result);
	if (!TargetPin)
	{
		Result.AddWarningMessage(FString::Printf(TEXT("[Failure] Target pin '%s' not found on node '%s'"), *TargetPinName, *FullTitle(TargetNode)));
		return false;
	}

	// The commonest mistake, wiring execution into a pure node, gets a plain word before the schema's vaguer one.
	if (SourcePin->PinType.PinCategory == UEdGraphSchema_K2::PC_Exec && IsPureNode(SourceNode))
	{
		Result.AddWarningMessage(FString::Printf(TEXT("[Failure] Attempted to connect execution pin on pure node '%s'. Pure nodes have no execution flow."), *SourceNode->GetNodeTitle(ENodeTitleType::ListView).ToString()));
		return false;
	}
	if (TargetPin->PinType.PinCategory == UEdGraphSchema_K2::PC_Exec && IsPureNode(TargetNode))
	{
		Result.AddWarningMessage(FString::Printf(TEXT("[Failure] Attempted to connect execution pin to pure node '%s'. Pure nodes have no execution flow."), *TargetNode->GetNodeTitle(ENodeTitleType::ListView).ToString()));
		return false;
	}

	const UEdGraphSchema* Schema = Graph->GetSchema();
	if (!Schema)
	{
		Schema = GetDefault<UEdGraphSchema_K2>();
	}
	const FPinConnectionResponse Response = Schema->CanCreateConnection(SourcePin, TargetPin);
	if (IsRefusal(Response))
	{
		const FString Reason = Response.Message.ToString();
		const FString Text = FString::Printf(TEXT("[Failure] Schema forbids connection: %s"), *Reason);
		ReportSchemaFailure(Result, Text, SourceNode, SourcePinName, TargetNode, TargetPinName, Reason);
		return false;
	}

	if (Schema->TryCreateConnection(SourcePin, TargetPin))
	{
		return true;
	}
	const FString Text = FString::Printf(TEXT("[Failure] TryCreateConnection failed: %s.%s -> %s.%s"), *FullTitle(SourceNode), *SourcePinName, *FullTitle(TargetNode), *TargetPinName);
	ReportSchemaFailure(Result, Text, SourceNode, SourcePinName, TargetNode, TargetPinName, TEXT("TryCreateConnection returned false"));
	return false;
}

EEdGraphPinDirection FPinConnectionUtils::ParsePinDirection(const FString& Word)
{
	if (Word.Equals(TEXT("output"), ESearchCase::IgnoreCase) || Word.Equals(TEXT("out"), ESearchCase::IgnoreCase))
	{
		return EGPD_Output;
	}
	return EGPD_Input;
}
