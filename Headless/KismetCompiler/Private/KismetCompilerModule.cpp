#include "KismetCompilerModule.h"

#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "KismetCompiler.h"
#include "Kismet2/CompilerResultsLog.h"
#include "Modules/ModuleManager.h"

/** The compiler module as the editor reaches it by name. */
class FKismetCompilerModule : public IKismetCompilerInterface
{
public:
	virtual void CompileBlueprint(UBlueprint* Blueprint, const FKismetCompilerOptions& CompileOptions, FCompilerResultsLog& Results) override
	{
		if (!Blueprint)
		{
			return;
		}
		// A Blueprint kind that registered a context of its own (widgets...) adds its members through it.
		TSharedPtr<FKismetCompilerContext> Compiler = FKismetCompilerContext::GetCompilerForBP(Blueprint, Results, CompileOptions);
		Compiler->Compile();
	}

	virtual void RefreshVariables(UBlueprint* Blueprint) override
	{
		FKismetCompilerOptions Options;
		Options.CompileType = EKismetCompileType::SkeletonOnly;
		FCompilerResultsLog Log;
		Log.bSilentMode = true;
		Log.bAnnotateMentionedNodes = false;
		CompileBlueprint(Blueprint, Options, Log);
	}

	virtual void GetBlueprintTypesForClass(UClass* ParentClass, UClass*& OutBlueprintClass, UClass*& OutBlueprintGeneratedClass) const override
	{
		OutBlueprintClass = nullptr;
		OutBlueprintGeneratedClass = nullptr;
		for (IBlueprintCompiler* Compiler : UE::Kismet::GetRegisteredBlueprintCompilers())
		{
			if (Compiler && Compiler->GetBlueprintTypesForClass(ParentClass, OutBlueprintClass, OutBlueprintGeneratedClass))
			{
				return;
			}
		}
		OutBlueprintClass = UBlueprint::StaticClass();
		OutBlueprintGeneratedClass = UBlueprintGeneratedClass::StaticClass();
	}
};

IMPLEMENT_MODULE(FKismetCompilerModule, KismetCompiler)
