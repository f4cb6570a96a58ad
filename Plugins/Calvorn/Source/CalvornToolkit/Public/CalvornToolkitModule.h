#pragma once

#include "CoreMinimal.h"
#include "Modules/ModuleInterface.h"

namespace Calvorn
{
	class IToolExecutor;
}

/**
 * The CalvornToolkit module: owns the tool executor that tool modules register with and hosts run
 * commands on. Starting it also reads UCalvornSettings from the project's Config folder.
 */
class CALVORNTOOLKIT_API FCalvornToolkitModule : public IModuleInterface
{
public:
	virtual void StartupModule() override;
	virtual void ShutdownModule() override;

	/** The executor while the module is loaded; null before it starts and after it shuts down. */
	[[nodiscard]] static TSharedPtr<Calvorn::IToolExecutor> GetToolExecutor();

private:
	TSharedPtr<Calvorn::IToolExecutor> ToolExecutor;
};
