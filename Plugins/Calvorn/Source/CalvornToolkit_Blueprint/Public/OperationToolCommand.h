#pragma once

#include "CoreMinimal.h"
#include "Dom/JsonObject.h"
#include "ITool.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Templates/Function.h"

namespace Calvorn
{
	/**
	 * The one tool adapter: parses a command's parameter text and hands the object to the static
	 * Execute(const FJsonObject&, FToolResult&) of an operation class. Every Blueprint tool is this
	 * class over its own operation; the adapter keeps no state between calls.
	 */
	template <typename OperationType>
	class TOperationToolCommand final : public ITool
	{
	public:
		TOperationToolCommand(FString InSchemaText, FString InDescription, FString InMetadata)
			: SchemaText(MoveTemp(InSchemaText))
			, Description(MoveTemp(InDescription))
			, Metadata(MoveTemp(InMetadata))
		{
		}

		virtual FString GetSchema() const override
		{
			return SchemaText;
		}

		virtual FString GetDescription() const override
		{
			return Description;
		}

		virtual void ValidateCommand(const FString& ParametersJson, FToolResult& Result) const override
		{
			if (!ParseParameters(ParametersJson).IsValid())
			{
				Result.AddErrorMessage(TEXT("Invalid JSON format"));
			}
		}

		virtual FString GetMetadata() override
		{
			if (MetadataProvider && !bMetadataResolved)
			{
				Metadata = MetadataProvider();
				bMetadataResolved = true;
			}
			if (Metadata.Len() < 2)
			{
				Metadata = TEXT("{}");
			}
			return Metadata;
		}

		virtual void InvalidateMetadata() override
		{
			if (MetadataProvider)
			{
				bMetadataResolved = false;
			}
		}

		virtual void Run(const FToolCommand& Command, TSharedPtr<FToolResult> Result, const FOnToolCompleted& OnCompleted) override
		{
			check(Result.IsValid());
			{
				const TSharedPtr<FJsonObject> Json = ParseParameters(Command.GetParametersJson());
				if (!Json.IsValid())
				{
					// Two messages on purpose: clients of the protocol match on either text.
					Result->AddErrorMessage(TEXT("Invalid JSON command"));
					Result->AddErrorMessage(TEXT("Failed to parse command JSON"));
				}
				else
				{
					OperationType::Execute(*Json, *Result);
				}
			}
			OnCompleted.ExecuteIfBound(*Result);
		}

		/** Sets a function that builds the metadata text, called again after each InvalidateMetadata. */
		void SetMetadataProvider(TFunction<FString()> InProvider)
		{
			MetadataProvider = MoveTemp(InProvider);
		}

	private:
		/** The parameter object, or null when the text is not a JSON object. */
		static TSharedPtr<FJsonObject> ParseParameters(const FString& Text)
		{
			TSharedPtr<FJsonObject> Json;
			const TSharedRef<TJsonReader<TCHAR>> Reader = TJsonReaderFactory<TCHAR>::Create(Text);
			if (!FJsonSerializer::Deserialize(Reader, Json))
			{
				return nullptr;
			}
			return Json;
		}

		FString SchemaText;
		FString Description;
		FString Metadata;
		TFunction<FString()> MetadataProvider;
		bool bMetadataResolved = true;
	};
}
