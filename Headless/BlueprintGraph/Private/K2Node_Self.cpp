#include "K2Node_Self.h"

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Kismet2/CompilerResultsLog.h"

#define LOCTEXT_NAMESPACE "K2Node_Self"

IMPLEMENT_CLASS(UK2Node_Self)

UK2Node_Self::UK2Node_Self()
{
}

void UK2Node_Self::AllocateDefaultPins()
{
	CreatePin(EGPD_Output, UEdGraphSchema_K2::PC_Object, UEdGraphSchema_K2::PSC_Self, nullptr, UEdGraphSchema_K2::PN_Self);
	Super::AllocateDefaultPins();
}

FText UK2Node_Self::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	if (TitleType == ENodeTitleType::MenuTitle)
	{
		return LOCTEXT("ListTitle", "Get a reference to self");
	}
	return NSLOCTEXT("K2Node", "SelfReferenceName", "Self-Reference");
}

FText UK2Node_Self::GetTooltipText() const
{
	return NSLOCTEXT("K2Node", "GetSelfReference", "Gets a reference to this instance of the blueprint");
}

FText UK2Node_Self::GetKeywords() const
{
	return LOCTEXT("SelfKeywords", "This");
}

FText UK2Node_Self::GetMenuCategory() const
{
	return LOCTEXT("VariablesCategory", "Variables");
}

void UK2Node_Self::ValidateNodeDuringCompilation(FCompilerResultsLog& MessageLog) const
{
	Super::ValidateNodeDuringCompilation(MessageLog);
	// The functions of a function library are static: there is no object to refer to.
	const UBlueprint* Blueprint = GetBlueprint();
	const UEdGraph* Graph = GetGraph();
	if (Blueprint && Graph && Blueprint->BlueprintType == BPTYPE_FunctionLibrary && Blueprint->FunctionGraphs.Contains(Graph))
	{
		MessageLog.Warning(*NSLOCTEXT("K2Node", "InvalidSelfNode", "Self node @@ cannot be used in a static function.").ToString(), this);
	}
}

#undef LOCTEXT_NAMESPACE
