#include "CoreMinimal.h"
#include "Dom/JsonObject.h"
#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "Kismet2/CompilerResultsLog.h"
#include "KismetCompilerModule.h"
#include "Serialization/PackageSerializer.h"
#include "Templates/Casts.h"
#include "UObject/Class.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectIterator.h"

namespace UE::UnrealEd::Private
{
	namespace
	{
		/**
		 * A Blueprint's classes are written with their parent class: the members come back with the next
		 * compile, but the class must be a class of its parent from the moment it is read, so that what
		 * refers to it (the Blueprint's GeneratedClass, pin types, other Blueprints) accepts it.
		 */
		class FBlueprintGeneratedClassSerializer : public UE::Headless::IPackageSerializer
		{
		public:
			virtual void SaveObject(const UObject& Object, FJsonObject& OutEntry, UE::Headless::FPackageSaveContext& Context) const override
			{
				const UClass& Class = static_cast<const UClass&>(Object);
				if (const UClass* Super = Class.GetSuperClass())
				{
					OutEntry.SetStringField(TEXT("super"), Super->GetPathName());
					Context.AddReferencedObject(Super);
				}
				UE::Headless::FPropertyPackageSerializer().SaveObject(Object, OutEntry, Context);
			}

			virtual void LoadObject(UObject& Object, const FJsonObject& Entry, UE::Headless::FPackageLoadContext& Context) const override
			{
				UClass& Class = static_cast<UClass&>(Object);
				FString SuperPath;
				if (Entry.TryGetStringField(TEXT("super"), SuperPath))
				{
					UClass* Super = FindObject<UClass>(nullptr, *SuperPath);
					if (!Super)
					{
						Context.AddError(FString::Printf(TEXT("its parent class '%s' cannot be found"), *SuperPath));
						return;
					}
					Class.SetSuperStruct(Super);
					Class.ClassFlags |= CLASS_CompiledFromBlueprint;
					Class.Bind();
					Class.StaticLink(true);
				}
				UE::Headless::FPropertyPackageSerializer().LoadObject(Object, Entry, Context);
				// The class knows its Blueprint through both of the engine's members.
				if (UBlueprintGeneratedClass* Generated = Cast<UBlueprintGeneratedClass>(&Class))
				{
					((UClass&)Class).ClassGeneratedBy = Generated->ClassGeneratedBy;
				}
			}

			virtual void PostLoadObject(UObject& Object, UE::Headless::FPackageLoadContext& Context) const override;
		};

		/**
		 * Once the package is read, the Blueprint's classes are built again from what was saved, as the
		 * editor does when it loads a Blueprint: members and signatures come from the graphs, not the file.
		 */
		class FBlueprintGeneratedClassLoadCompiler
		{
		public:
			static void CompileLoadedBlueprint(UClass& Class)
			{
				UBlueprint* Blueprint = Cast<UBlueprint>(Class.ClassGeneratedBy);
				if (!Blueprint || Blueprint->GeneratedClass.Get() != &Class || !Blueprint->bRecompileOnLoad)
				{
					return;
				}
				IKismetCompilerInterface* Compiler = IKismetCompilerInterface::GetPtr();
				if (!Compiler)
				{
					return;
				}
				FCompilerResultsLog Log;
				Log.bSilentMode = true;
				FKismetCompilerOptions Options;
				Compiler->CompileBlueprint(Blueprint, Options, Log);
			}
		};

		void FBlueprintGeneratedClassSerializer::PostLoadObject(UObject& Object, UE::Headless::FPackageLoadContext& Context) const
		{
			Object.PostLoad();
			FBlueprintGeneratedClassLoadCompiler::CompileLoadedBlueprint(static_cast<UClass&>(Object));
		}

		void RegisterBlueprintGeneratedClassSerializer()
		{
			UE::Headless::FPackageSerializerRegistry::Get().Register(
				FTopLevelAssetPath(TEXT("/Script/Engine"), TEXT("BlueprintGeneratedClass")), MakeShared<FBlueprintGeneratedClassSerializer>());
		}

		UE::CoreUObject::Private::FRegisterCompiledInCallback RegisterBlueprintGeneratedClassSerializerCallback(&RegisterBlueprintGeneratedClassSerializer);
	}
}
