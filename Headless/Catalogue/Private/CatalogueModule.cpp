#include "Catalogue/EngineCatalogue.h"

#include "Modules/ModuleManager.h"
#include "UObject/UObjectIterator.h"

#include <cstdio>

namespace
{
	void RegisterCatalogueReportingFailure()
	{
		static bool bReported = false;
		FString Error;
		if (!UE::Catalogue::RegisterEngineCatalogue(&Error) && !bReported)
		{
			bReported = true;
			std::fprintf(stderr, "%s\n", FStringToUTF8(Error).c_str());
		}
	}

	// Linking the catalogue is enough, as it is for compiled-in types: it registers right after them,
	// on the program's first object lookup, so C++ classes such as AActor exist to be completed.
	const UE::CoreUObject::Private::FRegisterCompiledInCallback GRegisterCatalogueAfterCompiledInTypes(&RegisterCatalogueReportingFailure);
}

/**
 * The Catalogue module. Starting it registers the engine catalogue if no lookup has done so yet, as the
 * engine's modules register their reflected types when they load; a failure is reported once, naming the
 * entry that could not be read.
 */
class FCatalogueModule : public IModuleInterface
{
public:
	virtual void StartupModule() override
	{
		RegisterCatalogueReportingFailure();
	}
};

IMPLEMENT_MODULE(FCatalogueModule, Catalogue)
