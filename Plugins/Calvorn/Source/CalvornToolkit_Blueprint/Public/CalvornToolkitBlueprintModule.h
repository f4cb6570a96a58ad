#pragma once

#include "CoreMinimal.h"
#include "Modules/ModuleInterface.h"

namespace Calvorn
{
	class ITool;
}

/**
 * The Blueprint tools module. Starting it registers each tool with the CalvornToolkit executor, and each
 * read tool's callback with the read-back registry; shutting it down takes back exactly what it registered.
 */
class CALVORNTOOLKIT_BLUEPRINT_API FCalvornToolkitBlueprintModule : public IModuleInterface
{
public:
	virtual void StartupModule() override;
	virtual void ShutdownModule() override;

	virtual bool SupportsDynamicReloading() override { return true; }
	virtual bool SupportsAutomaticShutdown() override { return true; }
	virtual bool IsGameModule() const override { return false; }

	/** The names the executor accepted, in registration order. */
	const TArray<FString>& GetRegisteredToolNames() const { return RegisteredToolNames; }

	/** The adapter made for a tool of this module's catalogue (held whether or not the executor took it), or null. */
	TSharedPtr<Calvorn::ITool> FindToolAdapter(const FString& ToolName) const;

	/** Every tool this build provides, in catalogue order, whether or not an executor took it. */
	static TArray<FString> GetProvidedToolNames();

	/** The read tools this build provides (a subset of GetProvidedToolNames), in catalogue order. */
	static TArray<FString> GetProvidedReadToolNames();

private:
	TArray<FString> RegisteredToolNames;
	/** One adapter per catalogue row, in row order, keeping each alive while it may be registered. */
	TArray<TSharedPtr<Calvorn::ITool>> Tools;
	TArray<FString> ToolNames;
};
