#include "UObject/FieldMetaDataMap.h"
#include "UObject/Class.h"
#include "Misc/CString.h"

namespace UE::CoreUObject::Private
{
	FMetaDataMap::~FMetaDataMap()
	{
		delete Map;
	}

	const FString* FMetaDataMap::Find(const FName& Key) const
	{
		return Map && !Key.IsNone() ? Map->Find(Key) : nullptr;
	}

	const FString& FMetaDataMap::Get(const FName& Key) const
	{
		static const FString Empty;
		const FString* Value = Find(Key);
		return Value ? *Value : Empty;
	}

	FText FMetaDataMap::GetText(const FName& Key) const
	{
		return FText::FromString(Get(Key));
	}

	void FMetaDataMap::Set(const FName& Key, FString&& Value)
	{
		if (Key.IsNone())
		{
			return;
		}
		if (!Map)
		{
			Map = new TMap<FName, FString>();
		}
		Map->Add(Key, MoveTemp(Value));
	}

	void FMetaDataMap::Remove(const FName& Key)
	{
		if (Map)
		{
			Map->Remove(Key);
		}
	}

	bool FMetaDataMap::GetBool(const FName& Key) const
	{
		return Get(Key) == TEXT("true");
	}

	int32 FMetaDataMap::GetInt(const FName& Key) const
	{
		return FCString::Atoi(*Get(Key));
	}

	float FMetaDataMap::GetFloat(const FName& Key) const
	{
		return FCString::Atof(*Get(Key));
	}

	const FString* FMetaDataMap::FindToolTip(bool bShortTooltip) const
	{
		const FString* ToolTip = bShortTooltip ? Find(TEXT("ShortTooltip")) : nullptr;
		if (!ToolTip || ToolTip->IsEmpty())
		{
			ToolTip = Find(TEXT("ToolTip"));
		}
		return ToolTip && !ToolTip->IsEmpty() ? ToolTip : nullptr;
	}

	UClass* FMetaDataMap::GetClass(const FName& Key) const
	{
		const FString& ClassName = Get(Key);
		return ClassName.IsEmpty() ? nullptr : UClass::TryFindTypeSlow<UClass>(ClassName, EFindFirstObjectOptions::ExactClass);
	}
}
