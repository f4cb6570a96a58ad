#pragma once

#include "CoreMinimal.h"

class UObject;
class UScriptStruct;

/**
 * The path of a top-level object (an asset or a reflected type): a package name and the object's name
 * in it, "/Game/Folder/Asset.Asset" or "/Script/Engine.Actor". Never a subobject.
 */
struct COREUOBJECT_API FTopLevelAssetPath
{
	FTopLevelAssetPath() = default;
	FTopLevelAssetPath(FName InPackageName, FName InAssetName) { TrySetPath(InPackageName, InAssetName); }
	/** From "/Package/Path.AssetName"; any other text leaves the path empty. */
	explicit FTopLevelAssetPath(const FString& Path) { TrySetPath(Path); }
	explicit FTopLevelAssetPath(const TCHAR* Path) { TrySetPath(FString(Path)); }
	FTopLevelAssetPath(const UObject* InObject);

	/** Sets the path; false (and an empty path) unless the package name starts with '/' and the asset name is valid. */
	bool TrySetPath(FName InPackageName, FName InAssetName);
	/** Sets from "/Package/Path.AssetName" (a leading "Class'" and trailing "'" are accepted); false, empty, otherwise. */
	bool TrySetPath(const FString& Path);
	bool TrySetPath(const TCHAR* Path) { return TrySetPath(FString(Path)); }
	bool TrySetPath(const UObject* InObject);

	FName GetPackageName() const { return PackageName; }
	FName GetAssetName() const { return AssetName; }

	/** "/Package/Path.AssetName", or empty for a null path. */
	FString ToString() const;
	void ToString(FString& Out) const;
	void AppendString(FString& Out) const;

	bool IsValid() const { return !PackageName.IsNone(); }
	bool IsNull() const { return PackageName.IsNone(); }
	void Reset() { PackageName = FName(); AssetName = FName(); }

	/** Compares ignoring case, as names do. */
	bool operator==(const FTopLevelAssetPath& Other) const { return PackageName == Other.PackageName && AssetName == Other.AssetName; }
	bool operator!=(const FTopLevelAssetPath& Other) const { return !(*this == Other); }
	int32 Compare(const FTopLevelAssetPath& Other) const;
	bool operator<(const FTopLevelAssetPath& Other) const { return Compare(Other) < 0; }

	/** Writes "/Package.Asset" (quoted when PPF_Delimited is set by a container). */
	bool ExportTextItem(FString& ValueStr, const FTopLevelAssetPath& DefaultValue, UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const;
	bool ImportTextItem(const TCHAR*& Buffer, int32 PortFlags, UObject* Parent, class FOutputDevice* ErrorText);

	friend uint32 GetTypeHash(const FTopLevelAssetPath& Path) { return HashCombine(GetTypeHash(Path.PackageName), GetTypeHash(Path.AssetName)); }

	static UScriptStruct* StaticStruct();

private:
	/** The reflection of the core structs reads the members' offsets. */
	friend struct FCoreStructReflection;

	FName PackageName;
	FName AssetName;
};

inline FString LexToString(const FTopLevelAssetPath& Path)
{
	return Path.ToString();
}
