#include "Populate/LocalVariableUtils.h"

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "EdGraph/EdGraph.h"
#include "EdGraph/EdGraphPin.h"
#include "Engine/Blueprint.h"
#include "K2Node_FunctionEntry.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Templates/Casts.h"
#include "ToolResult.h"

namespace
{
	bool ParseLocalVariableAction(const FString& Word, FLocalVariableRequest::EAction& OutAction)
	{
		if (Word.Equals(TEXT("add"), ESearchCase::IgnoreCase))
		{
			OutAction = FLocalVariableRequest::EAction::Add;
			return true;
		}
		if (Word.Equals(TEXT("modify"), ESearchCase::IgnoreCase))
		{
			OutAction = FLocalVariableRequest::EAction::Modify;
			return true;
		}
		if (Word.Equals(TEXT("remove"), ESearchCase::IgnoreCase))
		{
			OutAction = FLocalVariableRequest::EAction::Remove;
			return true;
		}
		return false;
	}

	/** A default value as the variable stores it: text as given, numbers with a decimal point, booleans as words. */
	bool ConvertDefaultValue(const FJsonValue& Value, FString& OutText)
	{
		switch (Value.Type)
		{
		case EJson::String:
			OutText = Value.AsString();
			return true;
		case EJson::Number:
			OutText = FString::SanitizeFloat(Value.AsNumber(), 1);
			return true;
		case EJson::Boolean:
			OutText = Value.AsBool() ? TEXT("true") : TEXT("false");
			return true;
		default:
			return false;
		}
	}

	UK2Node_FunctionEntry* FindFunctionEntry(const UEdGraph& Graph)
	{
		for (UEdGraphNode* Node : Graph.Nodes)
		{
			if (UK2Node_FunctionEntry* Entry = Cast<UK2Node_FunctionEntry>(Node))
			{
				return Entry;
			}
		}
		return nullptr;
	}

	/** Ends the variable work of the call: the text is an error, and the telemetry lists it. */
	bool Fail(const FString& Text, FLocalVariableOutcome& Out, Calvorn::FToolResult& Result)
	{
		Result.AddErrorMessage(Text);
		Out.Failures.Add(Text);
		return false;
	}
}

bool FLocalVariableUtils::ParseLocalVariables(const TSharedPtr<FJsonObject>& Json, TArray<FLocalVariableRequest>& Out, Calvorn::FToolResult& Result)
{
	if (!Json.IsValid())
	{
		return true;
	}
	for (const TPair<FString, TSharedPtr<FJsonValue>>& Member : Json->Values)
	{
		const FString& Name = Member.Key;
		const TSharedPtr<FJsonObject>* Definition = nullptr;
		if (!Member.Value.IsValid() || !Member.Value->TryGetObject(Definition) || !Definition || !Definition->IsValid())
		{
			Result.AddErrorMessage(FString::Printf(TEXT("Invalid local variable definition for '%s'"), *Name));
			return false;
		}
		const FJsonObject& Fields = **Definition;

		FLocalVariableRequest Request;
		Request.Name = Name;

		const TSharedPtr<FJsonValue> ActionValue = Fields.TryGetField(TEXT("action"));
		if (ActionValue.IsValid() && !ActionValue->IsNull())
		{
			const FString Word = ActionValue->AsString();
			if (!ParseLocalVariableAction(Word, Request.Action))
			{
				Result.AddErrorMessage(FString::Printf(TEXT("Unsupported local variable action '%s' for '%s'"), *Word, *Name));
				return false;
			}
		}

		if (const TSharedPtr<FJsonValue> DefaultValue = Fields.TryGetField(TEXT("default_variable_value")))
		{
			if (!ConvertDefaultValue(*DefaultValue, Request.DefaultValue))
			{
				Result.AddErrorMessage(FString::Printf(TEXT("Local variable '%s' has unsupported default value type"), *Name));
				return false;
			}
			Request.bHasDefaultValue = true;
		}

		if (Request.Action != FLocalVariableRequest::EAction::Remove)
		{
			const TSharedPtr<FJsonValue> TypeValue = Fields.TryGetField(TEXT("type"));
			if (TypeValue.IsValid() && !TypeValue->IsNull())
			{
				const TSharedPtr<FJsonObject>* TypeObject = nullptr;
				FPinTypeRecord Type;
				// A "type" that is no object cannot describe a pin; it is malformed rather than missing.
				if (!TypeValue->TryGetObject(TypeObject) || !TypeObject || !FGraphModificationParser::ParsePinType(*TypeObject, Type))
				{
					Result.AddErrorMessage(FString::Printf(TEXT("Failed to parse type for local variable '%s'"), *Name));
					return false;
				}
				Request.Type = Type;
			}
			else if (Request.Action == FLocalVariableRequest::EAction::Add)
			{
				Result.AddErrorMessage(FString::Printf(TEXT("Local variable '%s' is missing required 'type' definition"), *Name));
				return false;
			}
		}
		Out.Add(MoveTemp(Request));
	}
	return true;
}

FEdGraphPinType FLocalVariableUtils::BuildLocalVariablePinType(const FPinTypeRecord& Type)
{
	return FGraphModificationParser::BuildPinType(Type);
}

FBPVariableDescription* FLocalVariableUtils::FindLocalVariable(UK2Node_FunctionEntry* EntryNode, const FString& Name)
{
	if (!EntryNode)
	{
		return nullptr;
	}
	for (FBPVariableDescription& Variable : EntryNode->LocalVariables)
	{
		if (Variable.VarName.ToString().Equals(Name, ESearchCase::IgnoreCase))
		{
			return &Variable;
		}
	}
	return nullptr;
}

bool FLocalVariableUtils::ApplyLocalVariables(UBlueprint* Blueprint, UEdGraph* Graph, const TArray<FLocalVariableRequest>& Requests, FLocalVariableOutcome& Out, Calvorn::FToolResult& Result)
{
	Out = FLocalVariableOutcome();
	if (Requests.Num() == 0)
	{
		return true;
	}
	if (!Blueprint || !Graph)
	{
		Result.AddErrorMessage(TEXT("Cannot modify local variables without a valid Blueprint and graph"));
		return false;
	}

	UK2Node_FunctionEntry* Entry = FindFunctionEntry(*Graph);
	if (!Entry)
	{
		// Asking for locals in an event graph is a mistake of the request, not a reason to drop its nodes.
		const FString Text = TEXT("Local variables are only supported in function graphs");
		Result.AddWarningMessage(Text);
		Out.Failures.Add(Text);
		return true;
	}

	Graph->Modify();
	Entry->Modify();
	Blueprint->Modify();

	bool bChanged = false;
	TArray<FString> Removals;
	for (const FLocalVariableRequest& Request : Requests)
	{
		if (Request.Name.IsEmpty())
		{
			return Fail(TEXT("Local variable name cannot be empty"), Out, Result);
		}
		if (Request.Action == FLocalVariableRequest::EAction::Remove)
		{
			Removals.Add(Request.Name);
			continue;
		}

		const bool bHasType = Request.Type.IsSet() && !Request.Type->Category.IsEmpty();
		FBPVariableDescription* Variable = nullptr;
		if (Request.Action == FLocalVariableRequest::EAction::Add)
		{
			if (!bHasType)
			{
				return Fail(FString::Printf(TEXT("Local variable '%s' requires a 'type' field for add action"), *Request.Name), Out, Result);
			}
			if (FindLocalVariable(Entry, Request.Name))
			{
				return Fail(FString::Printf(TEXT("Local variable '%s' already exists"), *Request.Name), Out, Result);
			}
			FBlueprintEditorUtils::AddLocalVariable(Blueprint, Graph, FName(*Request.Name), BuildLocalVariablePinType(*Request.Type), Request.DefaultValue);
			Variable = FindLocalVariable(Entry, Request.Name);
			if (!Variable)
			{
				return Fail(FString::Printf(TEXT("Failed to create local variable '%s'"), *Request.Name), Out, Result);
			}
			++Out.Added;
			bChanged = true;
		}
		else
		{
			Variable = FindLocalVariable(Entry, Request.Name);
			if (!Variable)
			{
				return Fail(FString::Printf(TEXT("Local variable '%s' not found for modification"), *Request.Name), Out, Result);
			}
		}

		bool bTouched = false;
		if (bHasType)
		{
			Variable->VarType = BuildLocalVariablePinType(*Request.Type);
			bTouched = true;
		}
		if (!Request.DefaultValue.IsEmpty())
		{
			Variable->DefaultValue = Request.DefaultValue;
			bTouched = true;
		}
		if (Request.Action == FLocalVariableRequest::EAction::Modify && bTouched)
		{
			++Out.Modified;
			bChanged = true;
		}
	}

	// Removals wait for every addition and change, so the order of the request's entries never matters to them.
	for (const FString& Name : Removals)
	{
		int32 FoundIndex = INDEX_NONE;
		for (int32 Index = Entry->LocalVariables.Num() - 1; Index >= 0; --Index)
		{
			if (Entry->LocalVariables[Index].VarName.ToString().Equals(Name, ESearchCase::IgnoreCase))
			{
				FoundIndex = Index;
				break;
			}
		}
		if (FoundIndex == INDEX_NONE)
		{
			return Fail(FString::Printf(TEXT("Local variable '%s' not found for removal"), *Name), Out, Result);
		}
		Entry->LocalVariables.RemoveAt(FoundIndex);
		++Out.Removed;
		bChanged = true;
	}

	if (bChanged)
	{
		Entry->ReconstructNode();
		Graph->NotifyGraphChanged();
		FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Blueprint);
	}
	return true;
}
