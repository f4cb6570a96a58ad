#pragma once

#include "CoreTypes.h"
#include "Containers/Array.h"
#include "Containers/UnrealString.h"

/**
 * One ini file: named sections of "Key=Value" entries, in file order. A key may hold several values
 * (the engine's array syntax: "+Key=" adds a value unless present, ".Key=" adds it always, "-Key="
 * removes it, "!Key=" clears the key). Section and key names compare without case.
 */
class FConfigFile
{
public:
	struct FEntry
	{
		FString Key;
		FString Value;
	};

	struct FSection
	{
		FString Name;
		TArray<FEntry> Entries;
	};

	/**
	 * Reads ini text in the engine's syntax: "[Section]" headers, "Key=Value" lines, lines starting with
	 * ';' or '#' are comments, white space around keys and values is dropped, and a value in double
	 * quotes is unquoted ("\"" and "\\" escapes). Lines outside any section and lines without '=' are
	 * ignored, as the engine ignores them.
	 */
	CORE_API void ProcessInputFileContents(const FString& Contents);

	CORE_API const FSection* FindSection(const FString& SectionName) const;

	/** The first value of the key in the section, or null. */
	CORE_API const FString* FindValue(const FString& SectionName, const FString& Key) const;

	/** Every value of the key, in order. */
	CORE_API void GetValues(const FString& SectionName, const FString& Key, TArray<FString>& OutValues) const;

	/** Sets the key to one value, adding the section and key when missing. */
	CORE_API void SetValue(const FString& SectionName, const FString& Key, const FString& Value);

	const TArray<FSection>& GetSections() const { return Sections; }

private:
	FSection& FindOrAddSection(const FString& SectionName);

	TArray<FSection> Sections;
};

/**
 * The cache of ini files (the engine's GConfig). The headless editor reads the files it is asked
 * for, by their path on disk, when first asked; it does not build the engine's layered hierarchy
 * (Base, Default, Saved): a project's Config/Default<Name>.ini is read as it is. Values set with
 * Set* stay in memory.
 */
class FConfigCacheIni
{
public:
	/** The file, read (once) from disk when first asked for; null when it does not exist or cannot be read. */
	CORE_API FConfigFile* Find(const FString& Filename);

	/** Reads the file from disk now, replacing what the cache held; false when it cannot be read. */
	CORE_API bool LoadFile(const FString& Filename);

	/** Forgets the file, so that the next question reads it from disk again. */
	CORE_API void UnloadFile(const FString& Filename);

	/** Whether the file holds the section. */
	CORE_API bool DoesSectionExist(const TCHAR* Section, const FString& Filename);

	CORE_API bool GetString(const TCHAR* Section, const TCHAR* Key, FString& Value, const FString& Filename);
	/** True for "True", "Yes", "On" and non-zero numbers, without case, as the engine's FCString::ToBool. */
	CORE_API bool GetBool(const TCHAR* Section, const TCHAR* Key, bool& Value, const FString& Filename);
	CORE_API bool GetInt(const TCHAR* Section, const TCHAR* Key, int32& Value, const FString& Filename);
	CORE_API bool GetFloat(const TCHAR* Section, const TCHAR* Key, float& Value, const FString& Filename);
	CORE_API bool GetDouble(const TCHAR* Section, const TCHAR* Key, double& Value, const FString& Filename);
	/** Every value of an array key; the number of values. */
	CORE_API int32 GetArray(const TCHAR* Section, const TCHAR* Key, TArray<FString>& Out, const FString& Filename);
	/** The section's entries as "Key=Value" lines; false when there is no such section. */
	CORE_API bool GetSection(const TCHAR* Section, TArray<FString>& Result, const FString& Filename);

	CORE_API void SetString(const TCHAR* Section, const TCHAR* Key, const TCHAR* Value, const FString& Filename);
	CORE_API void SetBool(const TCHAR* Section, const TCHAR* Key, bool Value, const FString& Filename);
	CORE_API void SetInt(const TCHAR* Section, const TCHAR* Key, int32 Value, const FString& Filename);

private:
	struct FCachedFile
	{
		FString Filename;
		/** False when the file was looked for and is not there (so it is not looked for on every question). */
		bool bExists = false;
		FConfigFile File;
	};

	FCachedFile& FindOrLoad(const FString& Filename);

	TArray<FCachedFile> Files;
};

/** The process-wide config cache. */
extern CORE_API FConfigCacheIni* GConfig;
