#include "K2Node_Message.h"

#include "EdGraph/EdGraphPin.h"
#include "EdGraphSchema_K2.h"
#include "UObject/Class.h"

#define LOCTEXT_NAMESPACE "K2Node_Message"

IMPLEMENT_CLASS(UK2Node_Message)

UK2Node_Message::UK2Node_Message()
{
}

FText UK2Node_Message::GetNodeTitle(ENodeTitleType::Type TitleType) const
{
	const UFunction* Function = GetTargetFunction();
	if (!Function)
	{
		return NSLOCTEXT("K2Node", "InvalidMessageNode", "Invalid Message Node");
	}
	// Lists tell a message from a direct call of the same function; on the canvas it reads like any call.
	if (TitleType == ENodeTitleType::MenuTitle)
	{
		return FText::Format(LOCTEXT("ListTitle", "{0} (Message)"), GetUserFacingFunctionName(Function, TitleType));
	}
	return Super::GetNodeTitle(TitleType);
}

FText UK2Node_Message::GetTooltipText() const
{
	return FText::Format(LOCTEXT("MessageTooltip", "{0}\nSent as a message: nothing happens when the target lacks the interface."), Super::GetTooltipText());
}

UEdGraphPin* UK2Node_Message::CreateSelfPin(const UFunction* Function)
{
	UEdGraphPin* SelfPin = CreatePin(EGPD_Input, UEdGraphSchema_K2::PC_Object, UObject::StaticClass(), UEdGraphSchema_K2::PN_Self);
	SelfPin->bDefaultValueIsIgnored = true;
	return SelfPin;
}

#undef LOCTEXT_NAMESPACE
