#pragma once

#include "CoreMinimal.h"
#include "Modules/ModuleInterface.h"
#include "Modules/ModuleManager.h"
#include "Containers/Array.h"

class FCompilerResultsLog;
class UBlueprint;
class UClass;

#define KISMET_COMPILER_MODULENAME "KismetCompiler"

/** How much of a Blueprint a compile produces. */
namespace EKismetCompileType
{
	enum Type
	{
		/** Only the skeleton class: members and signatures, no validation of graphs. */
		SkeletonOnly,
		/** Skeleton and generated class, every graph validated. */
		Full,
		StubAfterFailure,
		BytecodeOnly,
		Cpp,
	};
}

struct FKismetCompilerOptions
{
	EKismetCompileType::Type CompileType = EKismetCompileType::Full;
	bool bSaveIntermediateProducts = false;
	bool bRegenerateSkelton = true;
	bool bIsDuplicationInstigated = false;
	bool bReinstanceAndStubOnFailure = true;
	bool bSkipDefaultObjectValidation = false;
	bool bSkipFiBSearchMetaUpdate = false;
	bool bUseDeltaSerializationDuringReinstancing = false;
	bool bSkipNewVariableDefaultsDetection = false;

	bool DoesRequireBytecodeGeneration() const { return CompileType == EKismetCompileType::Full || CompileType == EKismetCompileType::BytecodeOnly; }
};

/** What a Blueprint kind (widgets, animations...) tells the compiler about itself. */
class IBlueprintCompiler
{
public:
	virtual ~IBlueprintCompiler() = default;
	/** True when this kind handles Blueprints of Blueprint's class. */
	virtual bool CanCompile(const UBlueprint* Blueprint) = 0;
	/** The Blueprint and generated class kinds for a new Blueprint of ParentClass; false when not this kind's. */
	virtual bool GetBlueprintTypesForClass(UClass* ParentClass, UClass*& OutBlueprintClass, UClass*& OutBlueprintGeneratedClass) const { return false; }
};

namespace UE::Kismet
{
	/**
	 * The registered Blueprint kinds. Kept by the editor module (below the compiler) so that a module can
	 * register its kind at start-up whether or not the compiler is loaded yet.
	 */
	UNREALED_API TArray<IBlueprintCompiler*>& GetRegisteredBlueprintCompilers();
}

/**
 * The compiler, as the editor reaches it: through the module manager by name, because the editor
 * utilities sit below the compiler module.
 */
class IKismetCompilerInterface : public IModuleInterface
{
public:
	/** Compiles the Blueprint: builds its classes, validates its graphs, sets its Status and fills Results. */
	virtual void CompileBlueprint(UBlueprint* Blueprint, const FKismetCompilerOptions& CompileOptions, FCompilerResultsLog& Results) = 0;

	/** Rebuilds the skeleton class's variables after a change of the Blueprint's members. */
	virtual void RefreshVariables(UBlueprint* Blueprint) = 0;

	/** The Blueprint and generated class kinds for a new Blueprint of ParentClass. */
	virtual void GetBlueprintTypesForClass(UClass* ParentClass, UClass*& OutBlueprintClass, UClass*& OutBlueprintGeneratedClass) const = 0;

	/** The compiler, loaded on first use; null when the program does not link it. */
	static IKismetCompilerInterface* GetPtr()
	{
		return FModuleManager::LoadModulePtr<IKismetCompilerInterface>(KISMET_COMPILER_MODULENAME);
	}
};
