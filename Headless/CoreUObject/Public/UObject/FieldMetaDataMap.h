#pragma once

#include "CoreMinimal.h"

class UClass;

namespace UE::CoreUObject::Private
{
	/**
	 * The editor metadata of one field (Category, DisplayName, ToolTip...), held by both UField and FField,
	 * whose metadata calls forward here so that the two kinds of field read and write it by the same rules.
	 * Not part of the engine's API: use the field's own FindMetaData/SetMetaData/... calls.
	 *
	 * The map is made on the first Set, because most fields carry no metadata at all. A key given as text is
	 * looked up without adding it to the name table; only Set adds names.
	 */
	class COREUOBJECT_API FMetaDataMap
	{
	public:
		FMetaDataMap() = default;
		~FMetaDataMap();
		FMetaDataMap(const FMetaDataMap&) = delete;
		FMetaDataMap& operator=(const FMetaDataMap&) = delete;

		const FString* Find(const TCHAR* Key) const { return Find(LookupKey(Key)); }
		const FString* Find(const FName& Key) const;
		/** The value, or an empty string when absent. */
		const FString& Get(const TCHAR* Key) const { return Get(LookupKey(Key)); }
		const FString& Get(const FName& Key) const;
		FText GetText(const TCHAR* Key) const { return GetText(LookupKey(Key)); }
		FText GetText(const FName& Key) const;
		/** Overwrites an existing value; a None key is ignored. */
		void Set(const TCHAR* Key, FString&& Value) { Set(FName(Key), MoveTemp(Value)); }
		void Set(const FName& Key, FString&& Value);
		void Remove(const TCHAR* Key) { Remove(LookupKey(Key)); }
		void Remove(const FName& Key);

		bool GetBool(const TCHAR* Key) const { return GetBool(LookupKey(Key)); }
		bool GetBool(const FName& Key) const;
		int32 GetInt(const TCHAR* Key) const { return GetInt(LookupKey(Key)); }
		int32 GetInt(const FName& Key) const;
		float GetFloat(const TCHAR* Key) const { return GetFloat(LookupKey(Key)); }
		float GetFloat(const FName& Key) const;
		UClass* GetClass(const TCHAR* Key) const { return GetClass(LookupKey(Key)); }
		UClass* GetClass(const FName& Key) const;

		/** The first non-empty of ShortTooltip (only when bShortTooltip) and ToolTip, or null; each field decides what stands in for none. */
		const FString* FindToolTip(bool bShortTooltip) const;

		/** Every entry in the order it was first set; null until something has been set. */
		const TMap<FName, FString>* GetMap() const { return Map; }

	private:
		/** A key that was never made into a name cannot have a value, so reading must not create it. */
		static FName LookupKey(const TCHAR* Key) { return FName(Key, FNAME_Find); }

		TMap<FName, FString>* Map = nullptr;
	};
}
