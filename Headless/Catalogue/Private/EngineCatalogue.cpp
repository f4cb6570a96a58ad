#include "Catalogue/EngineCatalogue.h"

#include "CatalogueEmbeddedData.h"
#include "CatalogueLoader.h"

#include "HAL/PlatformTime.h"
#include "UObject/Class.h"

namespace UE::Catalogue
{
	namespace
	{
		struct FCatalogueState
		{
			bool bRegistered = false;
			bool bSucceeded = false;
			FString Error;
			FCatalogueStats Stats;
			Private::FCatalogueTypeRegistry Types;
		};

		FCatalogueState& GetState()
		{
			static FCatalogueState State;
			return State;
		}
	}

	bool RegisterEngineCatalogue(FString* OutError)
	{
		FCatalogueState& State = GetState();
		if (!State.bRegistered)
		{
			// Marked first: building the types looks objects up, which must not start a second registration.
			State.bRegistered = true;
			const double StartSeconds = FPlatformTime::Seconds();
			int32 NumModules = 0;
			const Private::FEmbeddedModule* Modules = Private::GetEmbeddedModules(NumModules);
			State.bSucceeded = Private::LoadCatalogue(Modules, NumModules, State.Types, State.Stats, State.Error);
			State.Stats.Seconds = FPlatformTime::Seconds() - StartSeconds;
		}
		if (OutError)
		{
			*OutError = State.Error;
		}
		return State.bSucceeded;
	}

	bool IsEngineCatalogueRegistered()
	{
		return GetState().bRegistered;
	}

	bool IsCatalogueType(const UField* Type)
	{
		return Type && GetState().Types.CatalogueTypes.Contains(Type);
	}

	bool IsMinimalType(const UField* Type)
	{
		return Type && GetState().Types.MinimalTypes.Contains(Type);
	}

	const FCatalogueStats& GetCatalogueStats()
	{
		return GetState().Stats;
	}
}
