#include "PluginDescriptor.h"
#include "PluginReferenceDescriptor.h"
#include "ProjectDescriptor.h"

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Misc/FileHelper.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"

namespace
{
	// Both descriptor kinds share the same versions: 1 and 2 are older layouts the engine still
	// reads, 3 is the current one.
	constexpr int32 LatestDescriptorFileVersion = 3;

	void SetReason(FText* OutFailReason, const FString& Reason)
	{
		if (OutFailReason)
		{
			*OutFailReason = FText::FromString(Reason);
		}
	}

	/** Parses descriptor text into an object; the reason carries the parser's position. */
	TSharedPtr<FJsonObject> ParseDescriptorText(const FString& Text, FText* OutFailReason)
	{
		TSharedPtr<FJsonObject> Object;
		const TSharedRef<TJsonReader<TCHAR>> Reader = TJsonReaderFactory<TCHAR>::CreateFromView(*Text, Text.Len());
		if (!FJsonSerializer::Deserialize(Reader, Object) || !Object.IsValid())
		{
			SetReason(OutFailReason, FString::Printf(TEXT("the file is not a JSON object (%s)"), *Reader->GetErrorMessage()));
			return nullptr;
		}
		return Object;
	}

	bool ReadFileVersion(const FJsonObject& Object, const TCHAR* LegacyField, int32& OutVersion, FText* OutFailReason)
	{
		const TSharedPtr<FJsonValue> Value = Object.HasField(TEXT("FileVersion")) ? Object.TryGetField(TEXT("FileVersion")) : Object.TryGetField(LegacyField);
		if (!Value.IsValid())
		{
			SetReason(OutFailReason, TEXT("the \"FileVersion\" field is missing"));
			return false;
		}
		double Number = 0;
		if (!Value->TryGetNumber(Number) || Number != double(int32(Number)))
		{
			SetReason(OutFailReason, TEXT("the \"FileVersion\" field is not a whole number"));
			return false;
		}
		OutVersion = int32(Number);
		if (OutVersion < 1 || OutVersion > LatestDescriptorFileVersion)
		{
			SetReason(OutFailReason, FString::Printf(TEXT("file version %d is not supported (versions 1 to %d are)"), OutVersion, LatestDescriptorFileVersion));
			return false;
		}
		return true;
	}

	/** An optional string field: absent leaves the value; present but not a string fails. */
	bool ReadOptionalString(const FJsonObject& Object, const TCHAR* Field, FString& OutValue, FText* OutFailReason)
	{
		const TSharedPtr<FJsonValue> Value = Object.TryGetField(Field);
		if (!Value.IsValid())
		{
			return true;
		}
		if (Value->Type != EJson::String)
		{
			SetReason(OutFailReason, FString::Printf(TEXT("the \"%s\" field must be a string"), Field));
			return false;
		}
		OutValue = Value->AsString();
		return true;
	}

	/** An optional boolean field: absent leaves the value; present but not true/false fails. */
	bool ReadOptionalBool(const FJsonObject& Object, const TCHAR* Field, bool& OutValue, bool* OutPresent, FText* OutFailReason)
	{
		const TSharedPtr<FJsonValue> Value = Object.TryGetField(Field);
		if (OutPresent)
		{
			*OutPresent = Value.IsValid();
		}
		if (!Value.IsValid())
		{
			return true;
		}
		if (Value->Type != EJson::Boolean)
		{
			SetReason(OutFailReason, FString::Printf(TEXT("the \"%s\" field must be true or false"), Field));
			return false;
		}
		OutValue = Value->AsBool();
		return true;
	}

	/** Loads a descriptor file and runs Read on it; failures name the file. */
	template <typename ReadFunc>
	bool LoadDescriptorFile(const FString& FileName, FText* OutFailReason, ReadFunc&& Read)
	{
		FString Text;
		if (!FFileHelper::LoadFileToString(Text, *FileName))
		{
			SetReason(OutFailReason, FString::Printf(TEXT("Failed to open descriptor file '%s'."), *FileName));
			return false;
		}
		FText Reason;
		if (!Read(Text, Reason))
		{
			SetReason(OutFailReason, FString::Printf(TEXT("Failed to read descriptor file '%s': %s."), *FileName, *Reason.ToString()));
			return false;
		}
		return true;
	}
}

bool FPluginReferenceDescriptor::Read(const FJsonObject& Object, FText* OutFailReason)
{
	FString ReadName;
	if (!Object.TryGetStringField(TEXT("Name"), ReadName) || ReadName.IsEmpty())
	{
		SetReason(OutFailReason, TEXT("a plug-in reference has no \"Name\""));
		return false;
	}
	bool bPresent = false;
	bool bReadEnabled = true;
	if (!ReadOptionalBool(Object, TEXT("Enabled"), bReadEnabled, &bPresent, OutFailReason))
	{
		return false;
	}
	if (!bPresent)
	{
		SetReason(OutFailReason, FString::Printf(TEXT("the reference to plug-in '%s' has no \"Enabled\" field"), *ReadName));
		return false;
	}
	bool bReadOptional = false;
	FString ReadDescription;
	FString ReadMarketplaceURL;
	if (!ReadOptionalBool(Object, TEXT("Optional"), bReadOptional, nullptr, OutFailReason)
		|| !ReadOptionalString(Object, TEXT("Description"), ReadDescription, OutFailReason)
		|| !ReadOptionalString(Object, TEXT("MarketplaceURL"), ReadMarketplaceURL, OutFailReason))
	{
		return false;
	}
	Name = MoveTemp(ReadName);
	bEnabled = bReadEnabled;
	bOptional = bReadOptional;
	Description = MoveTemp(ReadDescription);
	MarketplaceURL = MoveTemp(ReadMarketplaceURL);
	return true;
}

bool FPluginDescriptor::Load(const FString& FileName, FText* OutFailReason)
{
	return LoadDescriptorFile(FileName, OutFailReason, [this](const FString& Text, FText& Reason) { return Read(Text, &Reason); });
}

bool FPluginDescriptor::Read(const FString& Text, FText* OutFailReason)
{
	const TSharedPtr<FJsonObject> Object = ParseDescriptorText(Text, OutFailReason);
	return Object.IsValid() && Read(*Object, OutFailReason);
}

bool FPluginDescriptor::Read(const FJsonObject& Object, FText* OutFailReason)
{
	// Read into a copy so a failure leaves this descriptor as it was.
	FPluginDescriptor Result;
	if (!ReadFileVersion(Object, TEXT("PluginFileVersion"), Result.FileVersion, OutFailReason))
	{
		return false;
	}
	double VersionNumber = 0;
	if (Object.TryGetNumberField(TEXT("Version"), VersionNumber))
	{
		Result.Version = int32(VersionNumber);
	}
	bool bEnabledByDefault = false;
	bool bHasEnabledByDefault = false;
	const bool bFieldsRead = ReadOptionalString(Object, TEXT("VersionName"), Result.VersionName, OutFailReason)
		&& ReadOptionalString(Object, TEXT("FriendlyName"), Result.FriendlyName, OutFailReason)
		&& ReadOptionalString(Object, TEXT("Description"), Result.Description, OutFailReason)
		&& ReadOptionalString(Object, TEXT("Category"), Result.Category, OutFailReason)
		&& ReadOptionalString(Object, TEXT("CreatedBy"), Result.CreatedBy, OutFailReason)
		&& ReadOptionalString(Object, TEXT("CreatedByURL"), Result.CreatedByURL, OutFailReason)
		&& ReadOptionalString(Object, TEXT("DocsURL"), Result.DocsURL, OutFailReason)
		&& ReadOptionalString(Object, TEXT("MarketplaceURL"), Result.MarketplaceURL, OutFailReason)
		&& ReadOptionalString(Object, TEXT("SupportURL"), Result.SupportURL, OutFailReason)
		&& ReadOptionalString(Object, TEXT("EngineVersion"), Result.EngineVersion, OutFailReason)
		&& ReadOptionalBool(Object, TEXT("EnabledByDefault"), bEnabledByDefault, &bHasEnabledByDefault, OutFailReason)
		&& ReadOptionalBool(Object, TEXT("CanContainContent"), Result.bCanContainContent, nullptr, OutFailReason)
		&& ReadOptionalBool(Object, TEXT("IsBetaVersion"), Result.bIsBetaVersion, nullptr, OutFailReason)
		&& ReadOptionalBool(Object, TEXT("IsExperimentalVersion"), Result.bIsExperimentalVersion, nullptr, OutFailReason)
		&& ReadOptionalBool(Object, TEXT("Installed"), Result.bInstalled, nullptr, OutFailReason)
		&& ReadOptionalBool(Object, TEXT("Hidden"), Result.bIsHidden, nullptr, OutFailReason)
		&& ReadOptionalBool(Object, TEXT("ExplicitlyLoaded"), Result.bExplicitlyLoaded, nullptr, OutFailReason);
	if (!bFieldsRead)
	{
		return false;
	}
	if (bHasEnabledByDefault)
	{
		Result.EnabledByDefault = bEnabledByDefault ? EPluginEnabledByDefault::Enabled : EPluginEnabledByDefault::Disabled;
	}
	*this = MoveTemp(Result);
	return true;
}

bool FProjectDescriptor::Load(const FString& FileName, FText& OutFailReason)
{
	return LoadDescriptorFile(FileName, &OutFailReason, [this](const FString& Text, FText& Reason) { return Read(Text, Reason); });
}

bool FProjectDescriptor::Read(const FString& Text, FText& OutFailReason)
{
	const TSharedPtr<FJsonObject> Object = ParseDescriptorText(Text, &OutFailReason);
	return Object.IsValid() && Read(*Object, OutFailReason);
}

bool FProjectDescriptor::Read(const FJsonObject& Object, FText& OutFailReason)
{
	FProjectDescriptor Result;
	if (!ReadFileVersion(Object, TEXT("ProjectFileVersion"), Result.FileVersion, &OutFailReason))
	{
		return false;
	}
	if (!ReadOptionalString(Object, TEXT("EngineAssociation"), Result.EngineAssociation, &OutFailReason)
		|| !ReadOptionalString(Object, TEXT("Category"), Result.Category, &OutFailReason)
		|| !ReadOptionalString(Object, TEXT("Description"), Result.Description, &OutFailReason)
		|| !ReadOptionalBool(Object, TEXT("DisableEnginePluginsByDefault"), Result.bDisableEnginePluginsByDefault, nullptr, &OutFailReason))
	{
		return false;
	}

	if (const TSharedPtr<FJsonValue> PluginsValue = Object.TryGetField(TEXT("Plugins")))
	{
		const TArray<TSharedPtr<FJsonValue>>* Entries = nullptr;
		if (!PluginsValue->TryGetArray(Entries))
		{
			OutFailReason = FText::FromString(TEXT("the \"Plugins\" field must be an array"));
			return false;
		}
		for (const TSharedPtr<FJsonValue>& Entry : *Entries)
		{
			const TSharedPtr<FJsonObject>* EntryObject = nullptr;
			if (!Entry.IsValid() || !Entry->TryGetObject(EntryObject) || !EntryObject->IsValid())
			{
				OutFailReason = FText::FromString(TEXT("every entry of \"Plugins\" must be an object"));
				return false;
			}
			FPluginReferenceDescriptor Reference;
			if (!Reference.Read(**EntryObject, &OutFailReason))
			{
				return false;
			}
			Result.Plugins.Add(MoveTemp(Reference));
		}
	}

	if (const TSharedPtr<FJsonValue> DirectoriesValue = Object.TryGetField(TEXT("AdditionalPluginDirectories")))
	{
		const TArray<TSharedPtr<FJsonValue>>* Entries = nullptr;
		if (!DirectoriesValue->TryGetArray(Entries))
		{
			OutFailReason = FText::FromString(TEXT("the \"AdditionalPluginDirectories\" field must be an array"));
			return false;
		}
		for (const TSharedPtr<FJsonValue>& Entry : *Entries)
		{
			FString Directory;
			if (!Entry.IsValid() || !Entry->TryGetString(Directory))
			{
				OutFailReason = FText::FromString(TEXT("every entry of \"AdditionalPluginDirectories\" must be a string"));
				return false;
			}
			Result.AdditionalPluginDirectories.Add(MoveTemp(Directory));
		}
	}

	*this = MoveTemp(Result);
	return true;
}

const FPluginReferenceDescriptor* FProjectDescriptor::FindPluginReference(const FString& PluginName) const
{
	// A name listed twice counts by its last entry, as a later line in the file overrides an earlier one.
	for (int32 Index = Plugins.Num() - 1; Index >= 0; --Index)
	{
		if (Plugins[Index].Name.Equals(PluginName, ESearchCase::IgnoreCase))
		{
			return &Plugins[Index];
		}
	}
	return nullptr;
}
