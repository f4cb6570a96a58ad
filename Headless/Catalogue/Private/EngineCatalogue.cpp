#include "Catalogue/EngineCatalogue.h"

#include "CatalogueEmbeddedData.h"
#include "CatalogueLoader.h"

#include "HAL/PlatformTime.h"
#include "UObject/Class.h"

#include <string>

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

	bool RegisterCatalogueDocuments(const TArray<FCatalogueDocument>& Documents, FString& OutError)
	{
		RegisterEngineCatalogue();
		TArray<std::string> Texts;
		TArray<std::string> Names;
		TArray<const char*> Chunks;
		TArray<Private::FEmbeddedModule> Modules;
		Texts.Reserve(Documents.Num());
		Names.Reserve(Documents.Num());
		for (const FCatalogueDocument& Document : Documents)
		{
			Texts.Add(FStringToUTF8(Document.Json));
			Names.Add(FStringToUTF8(Document.ModuleName));
		}
		for (int32 Index = 0; Index < Documents.Num(); ++Index)
		{
			Chunks.Add(Texts[Index].c_str());
		}
		for (int32 Index = 0; Index < Documents.Num(); ++Index)
		{
			Modules.Add({ Names[Index].c_str(), &Chunks[Index], 1, (int32)Texts[Index].size() });
		}
		FCatalogueState& State = GetState();
		FCatalogueStats Stats;
		return Private::LoadCatalogue(Modules.GetData(), Modules.Num(), State.Types, Stats, OutError);
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
