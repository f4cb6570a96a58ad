#include "Interfaces/IProjectManager.h"

#include "Modules/ModuleManager.h"

namespace
{
	class FProjectManager final : public IProjectManager
	{
	public:
		virtual const FProjectDescriptor* GetCurrentProject() const override
		{
			return CurrentProject.IsValid() ? CurrentProject.Get() : nullptr;
		}

		virtual bool LoadProjectFile(const FString& ProjectFile) override
		{
			TSharedPtr<FProjectDescriptor> Descriptor = MakeShared<FProjectDescriptor>();
			FText Reason;
			if (!Descriptor->Load(ProjectFile, Reason))
			{
				LastFailureReason = Reason;
				return false;
			}
			CurrentProject = Descriptor;
			LastFailureReason = FText::GetEmpty();
			return true;
		}

		virtual const FText& GetLastLoadFailureReason() const override { return LastFailureReason; }

		virtual void ClearCurrentProject() override { CurrentProject.Reset(); }

		virtual bool IsPluginReferenced(const FString& PluginName, bool& OutEnabled) const override
		{
			const FPluginReferenceDescriptor* Reference = CurrentProject.IsValid() ? CurrentProject->FindPluginReference(PluginName) : nullptr;
			if (!Reference)
			{
				return false;
			}
			OutEnabled = Reference->bEnabled;
			return true;
		}

	private:
		TSharedPtr<FProjectDescriptor> CurrentProject;
		FText LastFailureReason;
	};
}

IProjectManager& IProjectManager::Get()
{
	static FProjectManager* Manager = new FProjectManager();
	return *Manager;
}

IMPLEMENT_MODULE(FDefaultModuleImpl, Projects)
