#pragma once

#include "CoreMinimal.h"

class UField;
class UClass;

/**
 * The engine's reflected API as data. The catalogue is embedded in the program and turns into
 * reflection objects under /Script/<Module> packages: UClass, UFunction, FProperty, UScriptStruct,
 * UEnum and delegate signatures. It is registered before the first object lookup, so code that links
 * the Catalogue module simply finds "/Script/Engine.Actor" like any other class.
 */
namespace UE::Catalogue
{
	/**
	 * Creates the catalogue's reflection objects. Later calls do nothing and report the first call's
	 * outcome. Returns false when the embedded data cannot be read or does not fit the object system;
	 * OutError then says which module and entry and why. Types created before a failure stay valid.
	 */
	bool RegisterEngineCatalogue(FString* OutError = nullptr);

	/** A catalogue document given as text, for data that does not come with the program. */
	struct FCatalogueDocument
	{
		/** The module the document describes; its types go to the /Script/<ModuleName> package. */
		FString ModuleName;
		/** The document in the catalogue format (see Tools/Catalogue/README.md). */
		FString Json;
	};

	/**
	 * Builds the types of extra catalogue documents exactly as the embedded catalogue is built, after
	 * registering the embedded one. Returns false with OutError naming the document, entry and reason
	 * on the first entry that cannot be read or resolved; types created before that stay valid.
	 */
	bool RegisterCatalogueDocuments(const TArray<FCatalogueDocument>& Documents, FString& OutError);

	/** Whether RegisterEngineCatalogue has run (successfully or not). */
	bool IsEngineCatalogueRegistered();

	/** Whether the class, struct, enum or delegate signature was created or completed from the catalogue. */
	bool IsCatalogueType(const UField* Type);

	/**
	 * Whether the type is only known by name and place: the catalogue records its module, super type
	 * and at most a few members, not its whole API.
	 */
	bool IsMinimalType(const UField* Type);

	/** What the last registration created, and how long it took. */
	struct FCatalogueStats
	{
		int32 NumModules = 0;
		int32 NumClasses = 0;
		int32 NumAugmentedClasses = 0;
		int32 NumFunctions = 0;
		int32 NumProperties = 0;
		int32 NumStructs = 0;
		int32 NumEnums = 0;
		int32 NumDelegates = 0;
		/** Functions left out because a parameter has a kind the object system cannot represent. */
		int32 NumSkippedFunctions = 0;
		double Seconds = 0.0;
	};
	const FCatalogueStats& GetCatalogueStats();
}
