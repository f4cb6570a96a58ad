#include "Logging/TokenizedMessage.h"

TSharedRef<FTextToken> FTextToken::Create(const FText& InMessage)
{
	return MakeShared<FTextToken>(InMessage);
}

TSharedRef<FTokenizedMessage> FTokenizedMessage::Create(EMessageSeverity::Type InSeverity, const FText& InMessageText)
{
	TSharedRef<FTokenizedMessage> Message = MakeShared<FTokenizedMessage>(InSeverity);
	if (!InMessageText.IsEmpty())
	{
		Message->AddToken(FTextToken::Create(InMessageText));
	}
	return Message;
}

FText FTokenizedMessage::ToText() const
{
	if (MessageTokens.Num() == 1)
	{
		return MessageTokens[0]->ToText();
	}
	FString Joined;
	for (const TSharedRef<IMessageToken>& Token : MessageTokens)
	{
		Joined += Token->ToText().ToString();
	}
	return FText::FromString(MoveTemp(Joined));
}

TSharedRef<FTokenizedMessage> FTokenizedMessage::AddToken(const TSharedRef<IMessageToken>& InToken)
{
	MessageTokens.Add(InToken);
	return AsShared();
}

TSharedRef<FTokenizedMessage> FTokenizedMessage::AddText(const FText& InText)
{
	return AddToken(FTextToken::Create(InText));
}
