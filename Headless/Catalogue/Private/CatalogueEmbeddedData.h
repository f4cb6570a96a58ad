#pragma once

#include "CoreTypes.h"

namespace UE::Catalogue::Private
{
	/** One module's catalogue file as the build embedded it: raw text chunks to be joined in order. */
	struct FEmbeddedModule
	{
		const char* ModuleName;
		const char* const* Chunks;
		int32 NumChunks;
		int32 NumBytes;
	};

	/** The embedded modules in load order (written by Tools/Catalogue/embed_catalogue.py). */
	const FEmbeddedModule* GetEmbeddedModules(int32& OutNum);
}
