#include "Animation/AnimBlueprint.h"
#include "Animation/AnimInstance.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "KismetCompilerModule.h"

namespace
{
	/** Tells Blueprint creation and the compiler that anim instances make Animation Blueprints. */
	class FAnimBlueprintKind : public IBlueprintCompiler
	{
	public:
		FAnimBlueprintKind()
		{
			UE::Kismet::GetRegisteredBlueprintCompilers().Add(this);
		}

		virtual bool CanCompile(const UBlueprint* Blueprint) override
		{
			return Cast<UAnimBlueprint>(Blueprint) != nullptr;
		}

		virtual bool GetBlueprintTypesForClass(UClass* ParentClass, UClass*& OutBlueprintClass, UClass*& OutBlueprintGeneratedClass) const override
		{
			if (!ParentClass || !ParentClass->IsChildOf(UAnimInstance::StaticClass()))
			{
				return false;
			}
			OutBlueprintClass = UAnimBlueprint::StaticClass();
			OutBlueprintGeneratedClass = UBlueprintGeneratedClass::StaticClass();
			return true;
		}
	};

	FAnimBlueprintKind GAnimBlueprintKind;
}
