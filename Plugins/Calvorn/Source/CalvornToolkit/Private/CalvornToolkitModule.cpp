#include "CalvornToolkitModule.h"

#include "CalvornSettings.h"
#include "Modules/ModuleManager.h"
#include "UObject/Class.h"
#include "ToolExecutor.h"

void FCalvornToolkitModule::StartupModule()
{
	ToolExecutor = MakeShared<Calvorn::FToolExecutor>();
	// The project is open by the time the editor starts plug-in modules, so its config can be read now.
	GetMutableDefault<UCalvornSettings>()->ReloadConfig();
}

void FCalvornToolkitModule::ShutdownModule()
{
	// Tools still registered go with the executor; modules that registered them have shut down first.
	ToolExecutor.Reset();
}

TSharedPtr<Calvorn::IToolExecutor> FCalvornToolkitModule::GetToolExecutor()
{
	FCalvornToolkitModule* Module = FModuleManager::GetModulePtr<FCalvornToolkitModule>(TEXT("CalvornToolkit"));
	return Module ? Module->ToolExecutor : TSharedPtr<Calvorn::IToolExecutor>();
}

IMPLEMENT_MODULE(FCalvornToolkitModule, CalvornToolkit)
