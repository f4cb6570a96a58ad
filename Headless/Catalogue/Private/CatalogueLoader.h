#pragma once

#include "CoreMinimal.h"
#include "Catalogue/EngineCatalogue.h"

class UField;

namespace UE::Catalogue::Private
{
	struct FEmbeddedModule;

	/** The types the catalogue created or completed; answers IsCatalogueType and IsMinimalType. */
	struct FCatalogueTypeRegistry
	{
		TSet<const UField*> CatalogueTypes;
		TSet<const UField*> MinimalTypes;
	};

	/**
	 * Turns catalogue documents into reflection objects. Types are created in dependency order:
	 * packages, enums, struct and class shells, struct members, delegate signatures, class members,
	 * then class defaults. Returns false with OutError naming the module and entry on the first
	 * entry that cannot be read or resolved.
	 */
	bool LoadCatalogue(const FEmbeddedModule* Modules, int32 NumModules, FCatalogueTypeRegistry& OutRegistry,
		FCatalogueStats& OutStats, FString& OutError);
}
