#pragma once

#include "CoreMinimal.h"
#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "Internationalization/Text.h"
#include "Templates/SharedPointer.h"
#include "UObject/NameTypes.h"

/** How serious a logged message is; lower values are more severe. */
namespace EMessageSeverity
{
	enum Type : int
	{
		Error = 1,
		PerformanceWarning = 2,
		Warning = 3,
		Info = 4,
	};
}

/** What a message token refers to. */
namespace EMessageToken
{
	enum Type
	{
		Action,
		Actor,
		AssetName,
		AssetData,
		Documentation,
		Image,
		Object,
		Severity,
		Text,
		Tutorial,
		URL,
		EdGraph,
		DynamicText,
		Fix,
	};
}

/** One piece of a message: plain text, or a link to something the message is about. */
class IMessageToken : public TSharedFromThis<IMessageToken>
{
public:
	virtual ~IMessageToken() = default;

	virtual EMessageToken::Type GetType() const = 0;

	/** The text this token contributes to the message. */
	virtual const FText& ToText() const { return CachedText; }

protected:
	FText CachedText;
};

/** A token holding literal text. */
class FTextToken : public IMessageToken
{
public:
	BLUEPRINTGRAPH_API static TSharedRef<FTextToken> Create(const FText& InMessage);

	virtual EMessageToken::Type GetType() const override { return EMessageToken::Text; }

	explicit FTextToken(const FText& InMessage) { CachedText = InMessage; }
};

/** A message made of tokens, with a severity. */
class FTokenizedMessage : public TSharedFromThis<FTokenizedMessage>
{
public:
	/** A new message; a non-empty text becomes its first token. */
	BLUEPRINTGRAPH_API static TSharedRef<FTokenizedMessage> Create(EMessageSeverity::Type InSeverity, const FText& InMessageText = FText());

	explicit FTokenizedMessage(EMessageSeverity::Type InSeverity) : Severity(InSeverity) {}

	/** Every token's text, one after the other. */
	BLUEPRINTGRAPH_API FText ToText() const;

	BLUEPRINTGRAPH_API TSharedRef<FTokenizedMessage> AddToken(const TSharedRef<IMessageToken>& InToken);
	BLUEPRINTGRAPH_API TSharedRef<FTokenizedMessage> AddText(const FText& InText);

	const TArray<TSharedRef<IMessageToken>>& GetMessageTokens() const { return MessageTokens; }

	EMessageSeverity::Type GetSeverity() const { return Severity; }
	void SetSeverity(const EMessageSeverity::Type InSeverity) { Severity = InSeverity; }

	/** The token to follow when the message is activated (the first object it names). */
	TSharedPtr<IMessageToken> GetMessageLink() const { return MessageLink; }
	void SetMessageLink(const TSharedPtr<IMessageToken>& InLink) { MessageLink = InLink; }

	/** An identifier some warnings carry so that projects can switch them off. */
	FName GetIdentifier() const { return Identifier; }
	void SetIdentifier(FName InIdentifier) { Identifier = InIdentifier; }

private:
	TArray<TSharedRef<IMessageToken>> MessageTokens;
	TSharedPtr<IMessageToken> MessageLink;
	EMessageSeverity::Type Severity;
	FName Identifier;
};
