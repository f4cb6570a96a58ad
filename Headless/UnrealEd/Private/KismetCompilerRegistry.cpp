#include "KismetCompilerModule.h"

namespace UE::Kismet
{
	TArray<IBlueprintCompiler*>& GetRegisteredBlueprintCompilers()
	{
		static TArray<IBlueprintCompiler*> Compilers;
		return Compilers;
	}
}
