// calvorn-bp: the program an agent or a person runs to reach the Blueprint tools.

#include "CoreMinimal.h"
#include "HostCommands.h"

int main(int ArgC, char** ArgV)
{
	TArray<FString> Args;
	for (int Index = 1; Index < ArgC; ++Index)
	{
		Args.Add(UTF8ToFString(ArgV[Index]));
	}
	return Calvorn::Host::RunHost(Args);
}
