#include "Interfaces/IPluginManager.h"

#include "Containers/StringConv.h"
#include "HAL/FileManager.h"
#include "Interfaces/IProjectManager.h"
#include "Misc/Paths.h"
#include "ProjectsPrivate.h"

#include <system_error>

namespace fs = std::filesystem;

namespace UE::Projects::Private
{
	fs::path ToFileSystemPath(const FString& Path)
	{
		const FTCHARToUTF8 Utf8(*Path, Path.Len());
		return fs::path(std::u8string(reinterpret_cast<const char8_t*>(Utf8.Get()), size_t(Utf8.Length())));
	}
}

namespace
{
	using UE::Projects::Private::ToFileSystemPath;

	// Roots the engine reserves for itself; a plug-in with one of these names would shadow them.
	const TCHAR* const ReservedRootNames[] = { TEXT("Game"), TEXT("Engine"), TEXT("Script"), TEXT("Temp"), TEXT("Memory"), TEXT("Config") };

	// Plug-in folders nest only a few levels deep; anything deeper is not a plug-in layout.
	constexpr int32 MaxPluginSearchDepth = 16;

	class FPlugin final : public IPlugin
	{
	public:
		FPlugin(const FString& InName, const FString& InFileName, const FPluginDescriptor& InDescriptor)
			: Name(InName)
			, FileName(InFileName)
			, Descriptor(InDescriptor)
		{
			FriendlyName = Descriptor.FriendlyName.IsEmpty() ? Name : Descriptor.FriendlyName;
		}

		virtual const FString& GetName() const override { return Name; }
		virtual const FString& GetFriendlyName() const override { return FriendlyName; }
		virtual const FString& GetDescriptorFileName() const override { return FileName; }
		virtual FString GetBaseDir() const override { return FPaths::GetPath(FileName); }
		virtual FString GetContentDir() const override { return GetBaseDir() / TEXT("Content"); }
		virtual FString GetMountedAssetPath() const override { return FString::Printf(TEXT("/%s/"), *Name); }
		virtual EPluginType GetType() const override { return EPluginType::Project; }
		virtual bool IsEnabled() const override { return bEnabled; }
		virtual bool IsMounted() const override { return bMounted; }
		virtual bool CanContainContent() const override { return Descriptor.bCanContainContent; }
		virtual EPluginLoadedFrom GetLoadedFrom() const override { return EPluginLoadedFrom::Project; }
		virtual const FPluginDescriptor& GetDescriptor() const override { return Descriptor; }

		virtual bool IsEnabledByDefault(bool bAllowEnginePluginsEnabledByDefault) const override
		{
			// A project's own plug-ins are on unless they say otherwise; engine plug-ins would need
			// to opt in.
			switch (Descriptor.EnabledByDefault)
			{
			case EPluginEnabledByDefault::Enabled:
				return GetLoadedFrom() == EPluginLoadedFrom::Project || bAllowEnginePluginsEnabledByDefault;
			case EPluginEnabledByDefault::Disabled:
				return false;
			default:
				return GetLoadedFrom() == EPluginLoadedFrom::Project;
			}
		}

		FString Name;
		FString FriendlyName;
		FString FileName;
		FPluginDescriptor Descriptor;
		bool bEnabled = false;
		bool bMounted = false;
	};

	class FPluginManager final : public IPluginManager
	{
	public:
		virtual void RefreshPluginsList() override
		{
			UnmountAll();
			Plugins.Reset();
			Warnings.Reset();
			if (!FPaths::IsProjectFilePathSet())
			{
				return;
			}

			TArray<FString> DescriptorFiles;
			FindPluginsInDirectory(FPaths::ProjectPluginsDir(), DescriptorFiles, 0);
			for (const FString& DescriptorFile : DescriptorFiles)
			{
				AddPlugin(DescriptorFile);
			}
			Plugins.StableSort([](const TSharedRef<FPlugin>& A, const TSharedRef<FPlugin>& B) { return A->Name.Compare(B->Name, ESearchCase::IgnoreCase) < 0; });

			for (const TSharedRef<FPlugin>& Plugin : Plugins)
			{
				Plugin->bEnabled = ShouldEnable(*Plugin);
			}
			if (const FProjectDescriptor* Project = IProjectManager::Get().GetCurrentProject())
			{
				for (const FPluginReferenceDescriptor& Reference : Project->Plugins)
				{
					// Engine plug-ins are not part of the headless editor; only a reference that nothing answers is reported.
					if (Reference.bEnabled && !Reference.bOptional && !FindPlugin(Reference.Name).IsValid())
					{
						Warnings.Add(FString::Printf(TEXT("The project enables plug-in '%s', which is not in its Plugins folder."), *Reference.Name));
					}
				}
			}
			for (const TSharedRef<FPlugin>& Plugin : Plugins)
			{
				Mount(*Plugin);
			}
		}

		virtual TSharedPtr<IPlugin> FindPlugin(const FString& Name) override
		{
			const TSharedRef<FPlugin>* Found = Plugins.FindByPredicate([&Name](const TSharedRef<FPlugin>& Plugin) { return Plugin->Name.Equals(Name, ESearchCase::IgnoreCase); });
			return Found ? TSharedPtr<IPlugin>(*Found) : TSharedPtr<IPlugin>();
		}

		virtual TSharedPtr<IPlugin> FindPluginFromPath(const FString& PluginPath) override
		{
			// "/Name/..." or "/Name": the first path component names the plug-in.
			if (!PluginPath.StartsWith(TEXT("/")))
			{
				return nullptr;
			}
			FString Root = PluginPath.RightChop(1);
			int32 SlashIndex = INDEX_NONE;
			if (Root.FindChar(TEXT('/'), SlashIndex))
			{
				Root.LeftInline(SlashIndex);
			}
			TSharedPtr<IPlugin> Plugin = FindPlugin(Root);
			return Plugin.IsValid() && Plugin->IsEnabled() ? Plugin : TSharedPtr<IPlugin>();
		}

		virtual TArray<TSharedRef<IPlugin>> GetEnabledPlugins() override
		{
			return Collect([](const FPlugin& Plugin) { return Plugin.bEnabled; });
		}

		virtual TArray<TSharedRef<IPlugin>> GetEnabledPluginsWithContent() const override
		{
			return Collect([](const FPlugin& Plugin) { return Plugin.bEnabled && Plugin.CanContainContent(); });
		}

		virtual TArray<TSharedRef<IPlugin>> GetDiscoveredPlugins() override
		{
			return Collect([](const FPlugin&) { return true; });
		}

		virtual void MountNewlyCreatedPlugin(const FString& PluginName) override
		{
			if (FindPlugin(PluginName).IsValid() || !FPaths::IsProjectFilePathSet())
			{
				return;
			}
			TArray<FString> DescriptorFiles;
			FindPluginsInDirectory(FPaths::ProjectPluginsDir(), DescriptorFiles, 0);
			for (const FString& DescriptorFile : DescriptorFiles)
			{
				if (FPaths::GetBaseFilename(DescriptorFile).Equals(PluginName, ESearchCase::IgnoreCase))
				{
					if (FPlugin* Plugin = AddPlugin(DescriptorFile))
					{
						// A plug-in created on purpose is wanted, whatever its default says.
						Plugin->bEnabled = true;
						Mount(*Plugin);
					}
					Plugins.StableSort([](const TSharedRef<FPlugin>& A, const TSharedRef<FPlugin>& B) { return A->Name.Compare(B->Name, ESearchCase::IgnoreCase) < 0; });
					return;
				}
			}
			Warnings.Add(FString::Printf(TEXT("No plug-in named '%s' was found under '%s'."), *PluginName, *FPaths::ProjectPluginsDir()));
		}

		virtual void SetRegisterMountPointDelegate(const FRegisterMountPointDelegate& Delegate) override { RegisterMountPointDelegate = Delegate; }
		virtual void SetUnRegisterMountPointDelegate(const FRegisterMountPointDelegate& Delegate) override { UnRegisterMountPointDelegate = Delegate; }
		virtual FNewPluginMountedEvent& OnNewPluginContentMounted() override { return NewPluginContentMountedEvent; }
		virtual FNewPluginMountedEvent& OnPluginUnmounted() override { return PluginUnmountedEvent; }

		void RegisterMountPoint(const FString& RootPath, const FString& ContentPath)
		{
			RegisterMountPointDelegate.ExecuteIfBound(RootPath, ContentPath);
		}

		void UnRegisterMountPoint(const FString& RootPath, const FString& ContentPath)
		{
			UnRegisterMountPointDelegate.ExecuteIfBound(RootPath, ContentPath);
		}

		void Forget()
		{
			UnmountAll();
			Plugins.Reset();
		}

		TArray<FString> TakeWarnings()
		{
			TArray<FString> Result = MoveTemp(Warnings);
			Warnings.Reset();
			return Result;
		}

	private:
		template <typename PredicateType>
		TArray<TSharedRef<IPlugin>> Collect(PredicateType&& Predicate) const
		{
			TArray<TSharedRef<IPlugin>> Result;
			for (const TSharedRef<FPlugin>& Plugin : Plugins)
			{
				if (Predicate(*Plugin))
				{
					Result.Add(Plugin);
				}
			}
			return Result;
		}

		/**
		 * Collects .uplugin files: a folder holding one is a plug-in, and its sub-folders are not
		 * searched further. Linked folders are not followed, so the search stays inside the project.
		 */
		void FindPluginsInDirectory(const FString& Directory, TArray<FString>& OutFiles, int32 Depth)
		{
			if (Depth > MaxPluginSearchDepth)
			{
				Warnings.Add(FString::Printf(TEXT("Plug-in search stopped at '%s': folders nest deeper than %d levels."), *Directory, MaxPluginSearchDepth));
				return;
			}
			TArray<FString> Descriptors;
			TArray<FString> SubDirectories;
			IFileManager::Get().IterateDirectory(*Directory, [&](const TCHAR* Path, bool bIsDirectory)
				{
					const FString Entry(Path);
					if (bIsDirectory)
					{
						std::error_code Error;
						if (!fs::is_symlink(ToFileSystemPath(Entry), Error))
						{
							SubDirectories.Add(Entry);
						}
					}
					else if (Entry.EndsWith(TEXT(".uplugin"), ESearchCase::IgnoreCase))
					{
						Descriptors.Add(Entry);
					}
					return true;
				});
			if (Descriptors.Num() > 0)
			{
				OutFiles.Append(Descriptors);
				return;
			}
			for (const FString& SubDirectory : SubDirectories)
			{
				FindPluginsInDirectory(SubDirectory, OutFiles, Depth + 1);
			}
		}

		FPlugin* AddPlugin(const FString& DescriptorFile)
		{
			const FString Name = FPaths::GetBaseFilename(DescriptorFile);
			if (const TSharedRef<FPlugin>* Existing = Plugins.FindByPredicate([&Name](const TSharedRef<FPlugin>& Plugin) { return Plugin->Name.Equals(Name, ESearchCase::IgnoreCase); }))
			{
				Warnings.Add(FString::Printf(TEXT("Plug-in '%s' at '%s' is ignored: a plug-in of that name was already found at '%s'."), *Name, *DescriptorFile, *(*Existing)->FileName));
				return nullptr;
			}
			FPluginDescriptor Descriptor;
			FText Reason;
			if (!Descriptor.Load(DescriptorFile, &Reason))
			{
				Warnings.Add(FString::Printf(TEXT("Plug-in '%s' is ignored. %s"), *Name, *Reason.ToString()));
				return nullptr;
			}
			const TSharedRef<FPlugin> Plugin = MakeShared<FPlugin>(Name, DescriptorFile, Descriptor);
			Plugins.Add(Plugin);
			return &Plugin.Get();
		}

		bool ShouldEnable(const FPlugin& Plugin) const
		{
			bool bReferencedEnabled = false;
			if (IProjectManager::Get().IsPluginReferenced(Plugin.Name, bReferencedEnabled))
			{
				return bReferencedEnabled;
			}
			return Plugin.IsEnabledByDefault(false);
		}

		/** Why a plug-in's name cannot be a content root, or empty when it can. */
		static FString GetRootNameProblem(const FString& Name)
		{
			for (const TCHAR* Reserved : ReservedRootNames)
			{
				if (Name.Equals(Reserved, ESearchCase::IgnoreCase))
				{
					return FString::Printf(TEXT("/%s/ is reserved by the engine"), Reserved);
				}
			}
			for (const TCHAR* Invalid = INVALID_LONGPACKAGE_CHARACTERS; *Invalid; ++Invalid)
			{
				int32 Index = INDEX_NONE;
				if (Name.FindChar(*Invalid, Index))
				{
					return TEXT("the name contains a character that is invalid in package names");
				}
			}
			return FString();
		}

		void Mount(FPlugin& Plugin)
		{
			if (!Plugin.bEnabled || !Plugin.CanContainContent() || Plugin.bMounted)
			{
				return;
			}
			const FString Problem = GetRootNameProblem(Plugin.Name);
			if (!Problem.IsEmpty())
			{
				Warnings.Add(FString::Printf(TEXT("The content of plug-in '%s' is not mounted: %s."), *Plugin.Name, *Problem));
				return;
			}
			RegisterMountPoint(Plugin.GetMountedAssetPath(), Plugin.GetContentDir() + TEXT("/"));
			Plugin.bMounted = true;
			NewPluginContentMountedEvent.Broadcast(Plugin);
		}

		void UnmountAll()
		{
			for (const TSharedRef<FPlugin>& Plugin : Plugins)
			{
				if (Plugin->bMounted)
				{
					UnRegisterMountPoint(Plugin->GetMountedAssetPath(), Plugin->GetContentDir() + TEXT("/"));
					Plugin->bMounted = false;
					PluginUnmountedEvent.Broadcast(*Plugin);
				}
			}
		}

		TArray<TSharedRef<FPlugin>> Plugins;
		TArray<FString> Warnings;
		FRegisterMountPointDelegate RegisterMountPointDelegate;
		FRegisterMountPointDelegate UnRegisterMountPointDelegate;
		FNewPluginMountedEvent NewPluginContentMountedEvent;
		FNewPluginMountedEvent PluginUnmountedEvent;
	};

	FPluginManager& GetPluginManager()
	{
		// Never destroyed: other modules' static objects may still unmount through it at exit.
		static FPluginManager* Manager = new FPluginManager();
		return *Manager;
	}
}

IPluginManager& IPluginManager::Get()
{
	return GetPluginManager();
}

namespace UE::Projects::Private
{
	void RegisterMountPoint(const FString& RootPath, const FString& ContentPath)
	{
		GetPluginManager().RegisterMountPoint(RootPath, ContentPath);
	}

	void UnRegisterMountPoint(const FString& RootPath, const FString& ContentPath)
	{
		GetPluginManager().UnRegisterMountPoint(RootPath, ContentPath);
	}

	void ForgetAllPlugins()
	{
		GetPluginManager().Forget();
	}

	TArray<FString> TakePluginWarnings()
	{
		return GetPluginManager().TakeWarnings();
	}
}
