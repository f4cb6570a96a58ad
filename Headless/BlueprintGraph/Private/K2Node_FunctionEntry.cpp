#include "K2Node_FunctionEntry.h"

#include "BlueprintNodeStatics.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "UObject/Script.h"

#define LOCTEXT_NAMESPACE "K2Node_FunctionEntry"

using namespace UE::BlueprintGraph::Private;

IMPLEMENT_CLASS(UK2Node_FunctionEntry,
	UE_NATIVE_PROPERTY(FNameProperty, CustomGeneratedFunctionName, CPF_None);
	UE_NATIVE_PROPERTY(FIntProperty, ExtraFlags, CPF_None);
	UE_NATIVE_PROPERTY(FStructProperty, MetaData, CPF_None, FKismetUserDeclaredFunctionMetadata::StaticStruct());
	WithStructElements(UE_NATIVE_PROPERTY(FArrayProperty, LocalVariables, CPF_None), FBPVariableDescription::StaticStruct());
	UE_NATIVE_PROPERTY(FBoolProperty, bEnforceConstCorrectness, CPF_None, 0, (uint32)sizeof(bool), true);
)

UK2Node_FunctionEntry::UK2Node_FunctionEntry()
{
}

const FName& UK2Node_FunctionEntry::GetWorldContextPinName()
{
	static const FName Name(TEXT("__WorldContext"));
	return Name;
}

void UK2Node_FunctionEntry::AllocateDefaultPins()
{
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Exec, UEdGraphSchema_K2::PN_Then);

	// An override or interface implementation takes the inherited signature.
	if (const UFunction* Function = FindSignatureFunction())
	{
		CreatePinsForFunctionEntryExit(Function, true);
	}

	Super::AllocateDefaultPins();

	// Static functions of a function library get the caller's world through a hidden parameter.
	const UBlueprint* Blueprint = GetBlueprint();
	if (Blueprint && Blueprint->BlueprintType == BPTYPE_FunctionLibrary && !FindPin(GetWorldContextPinName()))
	{
		UEdGraphPin* WorldContextPin = CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Object, UObject::StaticClass(), GetWorldContextPinName());
		WorldContextPin->bHidden = true;
	}
}

UEdGraphPin* UK2Node_FunctionEntry::GetAutoWorldContextPin() const
{
	return FindPin(GetWorldContextPinName());
}

FText UK2Node_FunctionEntry::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	// The entry shows the function's name as the graph shows it.
	const UEdGraph* Graph = GetGraph();
	const FName Name = Graph ? Graph->GetFName() : GetFunctionName();
	if (Name == UEdGraphSchema_K2::FN_UserConstructionScript)
	{
		return LOCTEXT("ConstructionScriptGraph", "Construction Script");
	}
	return FText::FromName(Name);
}

bool UK2Node_FunctionEntry::GetCanRenameNode() const
{
	const UEdGraph* Graph = GetGraph();
	return Graph && (Graph->bAllowDeletion || Graph->bAllowRenaming) && (bCanRenameNode || bIsEditable);
}

FName UK2Node_FunctionEntry::GetFunctionName() const
{
	return CustomGeneratedFunctionName.IsNone() ? Super::GetFunctionName() : CustomGeneratedFunctionName;
}

bool UK2Node_FunctionEntry::CanCreateUserDefinedPin(const FEdGraphPinType& InPinType, EEdGraphPinDirection InDesiredDirection, FText& OutErrorMessage)
{
	if (!Super::CanCreateUserDefinedPin(InPinType, InDesiredDirection, OutErrorMessage))
	{
		return false;
	}
	if (InDesiredDirection == EGPD_Input)
	{
		OutErrorMessage = LOCTEXT("AddInputPinError", "Cannot add input pins to function entry node!");
		return false;
	}
	return true;
}

UEdGraphPin* UK2Node_FunctionEntry::CreatePinFromUserDefinition(const TSharedPtr<FUserPinInfo> NewPinInfo)
{
	// What the function takes comes out of its entry.
	return CreateUserPin(NewPinInfo, EGPD_Output);
}

FBPVariableDescription* UK2Node_FunctionEntry::FindLocalVariable(FName VarName)
{
	for (FBPVariableDescription& Variable : LocalVariables)
	{
		if (Variable.VarName == VarName)
		{
			return &Variable;
		}
	}
	return nullptr;
}

#undef LOCTEXT_NAMESPACE
