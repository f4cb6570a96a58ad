#include "Catalogue/EngineCatalogue.h"

#include "Modules/ModuleManager.h"

#include <cstdio>

/**
 * The Catalogue module. Starting it registers the engine catalogue, as the engine's modules register
 * their reflected types when they load; a failure is reported once, naming the entry that could not be read.
 */
class FCatalogueModule : public IModuleInterface
{
public:
	virtual void StartupModule() override
	{
		FString Error;
		if (!UE::Catalogue::RegisterEngineCatalogue(&Error))
		{
			std::fprintf(stderr, "%s\n", FStringToUTF8(Error).c_str());
		}
	}
};

IMPLEMENT_MODULE(FCatalogueModule, Catalogue)
