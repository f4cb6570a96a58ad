#pragma once

#include "CoreMinimal.h"
#include "UObject/TopLevelAssetPath.h"

class UObject;
class UScriptStruct;
class FOutputDevice;

/**
 * A path to an object that may not be loaded: a top-level asset path plus, for a subobject, the path
 * inside it. "/Game/A/B.B", "/Game/A/B.B:Sub.Deeper", "/Script/Engine.Actor".
 */
struct COREUOBJECT_API FSoftObjectPath
{
	FSoftObjectPath() = default;
	explicit FSoftObjectPath(const FString& Path) { SetPath(Path); }
	explicit FSoftObjectPath(const TCHAR* Path) { SetPath(FString(Path)); }
	FSoftObjectPath(const FTopLevelAssetPath& InAssetPath, const FString& InSubPathString = FString()) { SetPath(InAssetPath, InSubPathString); }
	FSoftObjectPath(FName InPackageName, FName InAssetName, const FString& InSubPathString) { SetPath(FTopLevelAssetPath(InPackageName, InAssetName), InSubPathString); }
	FSoftObjectPath(const UObject* InObject) { SetPath(InObject); }
	FSoftObjectPath(std::nullptr_t) {}

	/**
	 * Sets from text: "/Pkg/Path.Asset", "/Pkg/Path.Asset:Sub", "Class'/Pkg/Path.Asset'" (the class part is
	 * dropped), or a bare package name ("/Pkg/Path"). "None" and "" reset; other text resets too.
	 */
	void SetPath(const FString& Path);
	void SetPath(const TCHAR* Path) { SetPath(FString(Path)); }
	void SetPath(const FTopLevelAssetPath& InAssetPath, const FString& InSubPathString = FString());
	void SetPath(const UObject* InObject);

	/** The full path text; empty for a null path. */
	FString ToString() const;
	void ToString(FString& Out) const;
	void AppendString(FString& Out) const;

	const FTopLevelAssetPath& GetAssetPath() const { return AssetPath; }
	/** The top-level part: "/Game/A/B.B". */
	FString GetAssetPathString() const { return AssetPath.ToString(); }
	/** "/Game/A/B". */
	FString GetLongPackageName() const { return AssetPath.GetPackageName().ToString(); }
	FName GetLongPackageFName() const { return AssetPath.GetPackageName(); }
	/** "B". */
	FString GetAssetName() const { return AssetPath.GetAssetName().ToString(); }
	FName GetAssetFName() const { return AssetPath.GetAssetName(); }
	const FString& GetSubPathString() const { return SubPathString; }
	void SetSubPathString(const FString& InSubPathString) { SubPathString = InSubPathString; }

	bool IsValid() const { return AssetPath.IsValid(); }
	bool IsNull() const { return AssetPath.IsNull(); }
	bool IsAsset() const { return AssetPath.IsValid() && !AssetPath.GetAssetName().IsNone() && SubPathString.IsEmpty(); }
	bool IsSubobject() const { return AssetPath.IsValid() && !SubPathString.IsEmpty(); }
	/** True for a path to a package alone (no object name). */
	bool IsPackage() const { return AssetPath.IsValid() && AssetPath.GetAssetName().IsNone(); }
	void Reset();

	/** The object when it is in memory (garbage excluded), else null. */
	UObject* ResolveObject() const;
	/** The object, loading its package if needed; null when it cannot be found or loaded. */
	UObject* TryLoad() const;

	bool operator==(const FSoftObjectPath& Other) const { return AssetPath == Other.AssetPath && SubPathString.Equals(Other.SubPathString, ESearchCase::IgnoreCase); }
	bool operator!=(const FSoftObjectPath& Other) const { return !(*this == Other); }
	bool LexicalLess(const FSoftObjectPath& Other) const;

	/** Writes the path (quoted when PPF_Delimited); a null path writes as an empty string. */
	bool ExportTextItem(FString& ValueStr, const FSoftObjectPath& DefaultValue, UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const;
	bool ImportTextItem(const TCHAR*& Buffer, int32 PortFlags, UObject* Parent, FOutputDevice* ErrorText);

	static FSoftObjectPath GetOrCreateIDForObject(const UObject* Object) { return FSoftObjectPath(Object); }

	friend uint32 GetTypeHash(const FSoftObjectPath& Path) { return HashCombine(GetTypeHash(Path.AssetPath), GetTypeHash(Path.SubPathString)); }

	static UScriptStruct* StaticStruct();

private:
	/** The reflection of the core structs reads the members' offsets. */
	friend struct FCoreStructReflection;

	FTopLevelAssetPath AssetPath;
	FString SubPathString;
};

/** An FSoftObjectPath that names a class. */
struct COREUOBJECT_API FSoftClassPath : public FSoftObjectPath
{
	using FSoftObjectPath::FSoftObjectPath;
	FSoftClassPath() = default;
	FSoftClassPath(const class UClass* InClass);

	/** The class, loading its package if needed; null unless it is a class derived from T. */
	template <class T>
	class UClass* TryLoadClass() const
	{
		return TryLoadClassDerivedFrom(T::StaticClass());
	}
	/** The class when it is in memory, else null. */
	class UClass* ResolveClass() const;
	class UClass* TryLoadClassDerivedFrom(class UClass* BaseClass) const;

	static UScriptStruct* StaticStruct();
};

inline FString LexToString(const FSoftObjectPath& Path)
{
	return Path.ToString();
}
