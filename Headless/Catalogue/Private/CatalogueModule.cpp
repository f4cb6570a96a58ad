#include "Catalogue/EngineCatalogue.h"

#include "CatalogueEmbeddedData.h"

#include "Modules/ModuleManager.h"
#include "UObject/Class.h"

#include <cstdio>

namespace
{
	void ReportFailure(const FString& Error)
	{
		std::fprintf(stderr, "%s\n", FStringToUTF8(Error).c_str());
	}

	/**
	 * The catalogue is compiled-in reflection data, so it registers the way compiled-in types do:
	 * queued at start-up and built before the first object lookup. It must come after every C++ type
	 * it completes or refers to (UObject, the core structs...), whose registrants may be queued after
	 * this one; so the first call only queues it again, behind everything queued so far.
	 */
	UObject* RegisterCatalogueAfterCompiledInTypes()
	{
		static bool bRequeued = false;
		if (!bRequeued)
		{
			bRequeued = true;
			static UE::CoreUObject::Private::FRegisterCompiledInType Requeue(&RegisterCatalogueAfterCompiledInTypes);
			return nullptr;
		}
		FString Error;
		if (!UE::Catalogue::RegisterEngineCatalogue(&Error))
		{
			ReportFailure(Error);
		}
		return nullptr;
	}

	UE::CoreUObject::Private::FRegisterCompiledInType GCatalogueRegistrant(&RegisterCatalogueAfterCompiledInTypes);

	/**
	 * A path lookup ("/Script/Engine.Actor") only asks for names that already exist, so the script
	 * package names must be known before the first lookup for that lookup to reach the queued
	 * registration above.
	 */
	struct FScriptPackageNames
	{
		FScriptPackageNames()
		{
			int32 NumModules = 0;
			const UE::Catalogue::Private::FEmbeddedModule* Modules = UE::Catalogue::Private::GetEmbeddedModules(NumModules);
			for (int32 Index = 0; Index < NumModules; ++Index)
			{
				const FName PackageName(*(FString(TEXT("/Script/")) + FString(Modules[Index].ModuleName)));
				(void)PackageName;
			}
		}
	};
	FScriptPackageNames GScriptPackageNames;
}

/**
 * The Catalogue module. The catalogue is usually registered by the first object lookup already;
 * starting the module makes sure of it, as the engine's modules register their types when they load.
 */
class FCatalogueModule : public IModuleInterface
{
public:
	virtual void StartupModule() override
	{
		FString Error;
		if (!UE::Catalogue::RegisterEngineCatalogue(&Error))
		{
			ReportFailure(Error);
		}
	}
};

IMPLEMENT_MODULE(FCatalogueModule, Catalogue)
