#pragma once

#include "CoreMinimal.h"
#include "KeywordSimilarity.h"

class FJsonObject;
class FProperty;
class UClass;
class UFactory;
class UObject;

struct FEdGraphPinType;

namespace Calvorn
{
	class FToolResult;
}

/**
 * Asset operations and text helpers shared by the tools: path handling, source control, creating,
 * saving and deleting assets, the keyword primitives of fuzzy matching, and JSON printing.
 *
 * Asset paths. Every path given to these functions goes through NormalizeAssetPath first, so
 * "/Game/Doors/BP_Door", "/Game/Doors/BP_Door.BP_Door", "/Game/Doors/BP_Door.BP_Door_C",
 * " /Game//Doors/BP_Door/ " and "/Game/Doors/BP_Door.uasset" all name the same asset.
 */
class CALVORNTOOLKIT_API FAssetOperationBase
{
public:
	// ---- Paths ---------------------------------------------------------------------------------

	/**
	 * The canonical object path of the asset a path names: "/Game/Folder/Asset.Asset".
	 * Surrounding white space and quotes are dropped, backslashes become slashes, doubled slashes
	 * collapse and a trailing slash goes. A class reference form ("Blueprint'/Game/A/B.B'") gives
	 * its quoted path. A package file extension (".uasset", ".umap") is removed. The object part
	 * after the '.' is kept when it names the asset; a generated class name ("Asset_C") or a
	 * default object ("Default__Asset_C") is turned into the asset's own name, and a sub-object
	 * (":Inner") is dropped. Text that cannot be an asset path is returned trimmed but otherwise
	 * unchanged, so lookups on it fail with the caller's message.
	 */
	[[nodiscard]] static FString NormalizeAssetPath(const FString& AssetPath);

	/** The package part of the normalised path: "/Game/Folder/Asset". */
	[[nodiscard]] static FString GetPackageNameFromPath(const FString& AssetPath);

	/** Whether the asset registry knows the asset (on disk, or created in memory) or it is loaded. */
	[[nodiscard]] static bool AssetExists(const FString& AssetPath);

	/** The asset's name: the last component of the package part of the normalised path ("Asset"). */
	[[nodiscard]] static FString GetAssetNameFromPath(const FString& AssetPath);

	/**
	 * The class a request names: a class path ("/Script/Engine.StaticMeshComponent"), a class name with
	 * or without its C++ prefix ("StaticMeshComponent", "UStaticMeshComponent"), or an asset that
	 * stands for a class (a Blueprint's path or unique name gives its generated class). A short name
	 * that several classes share means the native one. Null when nothing matches, when several assets
	 * have the name, or when the class is not in memory.
	 */
	[[nodiscard]] static UClass* GetAssetClassFromAssetName(const FString& AssetName);

	// ---- Source control ------------------------------------------------------------------------

	/**
	 * Whether the asset may be changed. Headless there is no check-out: the asset's package file must
	 * exist and be writable. False with the reason in OutError otherwise (not found, no file, or
	 * read-only).
	 */
	static bool CheckOutAssetForModify(const FString& AssetPath, FString& OutError);

	/**
	 * Records a new or changed asset with source control. When the project folder lies inside a git
	 * work tree the package file is staged with `git add` (run directly, without a shell, with a time
	 * limit); otherwise there is nothing to do and the answer is true. False with git's reason when
	 * staging fails.
	 */
	static bool AddAssetToSourceControl(const FString& AssetPath, FString& OutError);

	// ---- Creating, saving, deleting ------------------------------------------------------------

	/**
	 * Creates the asset AssetName of AssetClass in the new package PackagePath/AssetName, PackagePath
	 * being the folder ("/Game/Folder"), as the editor's asset tools take it. With a factory the
	 * factory makes the object (in a build whose editor module has asset factories; otherwise a
	 * factory is refused with a message); without one it is NewObject in the new package. The new
	 * asset is public and standalone, its package dirty, and the asset registry is told. Returns null
	 * with an error in Result when the path or name is invalid, the package or an object of that name
	 * already exists, the class is abstract, or the factory fails; a package made for it is discarded.
	 */
	static UObject* CreateAsset(const FString& AssetName, const FString& PackagePath, UClass* AssetClass, Calvorn::FToolResult& Result, UFactory* Factory = nullptr);

	/** Saves the asset's package to its file; false with an error in Result naming the asset and the reason. */
	static bool SaveAsset(UObject* Asset, Calvorn::FToolResult& Result);

	/**
	 * Deletes the asset at the request's "path". Refused (an error naming them) while other assets
	 * reference it; otherwise the package file is deleted, the asset registry forgets the asset, and
	 * the package's objects are marked as garbage. AssetKindName ("Blueprint") names the asset in the
	 * messages.
	 */
	static void ExecuteDeleteOperation(const FJsonObject& Json, Calvorn::FToolResult& Result, const FString& AssetKindName);

	// ---- Pin types and property text ----------------------------------------------------------

	/**
	 * Reads a pin type from its JSON form: "category" (a pin category word such as "bool", "int",
	 * "real", "object", "struct"; "boolean" and "integer" are understood), "sub_category",
	 * "sub_category_object" (a class, struct or enum by path or by name; a Blueprint stands for its
	 * generated class), "container_type" ("array", "set", "map"; the alias "container" is read when it
	 * is absent; any other word means a single value), the flags "is_reference", "is_const",
	 * "is_weak_pointer", "is_u_object_wrapper", and for a map "value_type" with the value's
	 * "category", "sub_category" and "sub_category_object".
	 * "float" and "double" become a real number of that precision unless a sub-category is given, as
	 * the editor itself stores them. False, with the reason in OutError when given, for a missing or
	 * unknown category, a type object that cannot be found, a struct without its struct, or a map
	 * without a usable value type. OutPinType is only written on success.
	 */
	static bool ConvertJsonToEdGraphPinType(const TSharedPtr<FJsonObject>& TypeJson, FEdGraphPinType& OutPinType, FString* OutError = nullptr);

	/**
	 * The JSON form of a pin type, readable by ConvertJsonToEdGraphPinType: "category",
	 * "sub_category" and "sub_category_object" (the object's path; empty when there is none),
	 * "container_type" ("none", "array", "set" or "map"), each flag that is set, and "value_type" for
	 * a map.
	 */
	[[nodiscard]] static TSharedPtr<FJsonObject> ConvertEdGraphPinTypeToJson(const FEdGraphPinType& PinType);

	/** The pin type the editor shows a property as; false for a null property or one no pin can carry. */
	static bool ConvertPropertyToEdGraphPinType(const FProperty* Property, FEdGraphPinType& OutPinType);

	/**
	 * The value of a property of an object as the editor writes it in text (the property's export text:
	 * "True", "42", "(X=1.000000,Y=2.000000,Z=3.000000)", an object's path). Empty for a null object or
	 * property, or a property that does not belong to the object's class.
	 */
	[[nodiscard]] static FString GetPropertyValueAsString(const UObject* Object, const FProperty* Property);

	/** As above; false (OutValue untouched) for a null object or property, or one of another class. */
	static bool GetPropertyValueAsString(const UObject* Object, const FProperty* Property, FString& OutValue);

	/**
	 * As above, the property found by name (without case) on the object's class and its parents; false
	 * when there is no such property.
	 */
	static bool GetPropertyValueAsString(const UObject* Object, const FString& PropertyName, FString& OutValue);

	/**
	 * Sets a property of an object from text in the editor's form (the property's import text, which
	 * also takes the plain forms "true", "1.5", "Hello"). The whole text must be read: anything left over
	 * fails, and the value is then unchanged. False with the reason in OutError for a null object, an
	 * unknown property, or a text the property cannot read.
	 */
	static bool SetPropertyValueAsString(UObject* Object, const FString& PropertyName, const FString& Value, FString& OutError);

	// ---- Keywords and similarity ---------------------------------------------------------------

	/**
	 * Splits a text into lower-case keywords, each once, in order of first appearance. Words break
	 * at anything that is not a letter or digit, and inside run-together words at a lower-to-upper
	 * case change ("GetActorLocation"), at the end of an upper-case run before a capitalised word
	 * ("HTTPRequest" -> "http", "request"), and between letters and digits ("Vector2D" -> "vector",
	 * "2d"). A leading engine type prefix of a run-together class name ("K2Node_", "UK2Node_") is a
	 * word of its own.
	 */
	[[nodiscard]] static TArray<FString> CreateKeywords(const FString& Text);

	/** Adds the keywords of Text that Keywords does not hold yet, in order. */
	static void AppendKeywords(const FString& Text, TArray<FString>& Keywords);

	/** Compares a request's keywords with a candidate's; see FKeywordSimilarity. */
	[[nodiscard]] static FKeywordSimilarity CalculateKeywordSimilarity(const TArray<FString>& RequestedKeywords, const TArray<FString>& CandidateKeywords);

	/**
	 * How sure a match is, 0 to 1: the request's coverage weighed with how much of the candidate the
	 * request explains. Identical keyword sets give 1; 0.6 is the usual bar, which a request sharing
	 * only one generic word with a longer candidate stays below.
	 */
	[[nodiscard]] static float CalculateMatchConfidence(const TArray<FString>& RequestedKeywords, const TArray<FString>& CandidateKeywords, const FKeywordSimilarity& Similarity);

	/** The number of single-character insertions, deletions and substitutions between A and B, ignoring case. */
	[[nodiscard]] static int32 LevenshteinDistance(const FString& A, const FString& B);

	// ---- JSON ----------------------------------------------------------------------------------

	/** The object as condensed JSON text (pretty-printed with bPrettyPrint); "{}" for a null object. */
	[[nodiscard]] static FString SerializeJson(const TSharedPtr<FJsonObject>& JsonObject, bool bPrettyPrint = false);
};
