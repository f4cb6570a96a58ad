#pragma once

#include "CoreMinimal.h"

namespace Calvorn
{
	/** Checks made before an object path from a request is loaded, so a bad path fails with a reason instead of a load. */
	class CALVORNCORE_API FSafeAssetLoader
	{
	public:
		/**
		 * Whether the text is a well-formed object path: a long package name the engine accepts
		 * ("/Game/Folder/Asset"), optionally followed by ".Object" and ":SubObject" parts made of
		 * valid object-name characters. Only the form is checked, not whether the asset exists.
		 */
		[[nodiscard]] static bool IsValidAssetPath(const FString& ObjectPath);

		/**
		 * Whether the asset registry knows an asset in the package of the path (the part before the
		 * first '.'), on disk or created in memory since the last scan.
		 */
		[[nodiscard]] static bool AssetExistsInRegistry(const FString& ObjectPath);
	};
}

using Calvorn::FSafeAssetLoader;
