#include "OperationDurationScope.h"

#include "HAL/PlatformTime.h"
#include "ToolResult.h"

namespace Calvorn
{
	FOperationDurationScope::FOperationDurationScope(FToolResult& InResult)
		: Result(InResult)
		, StartSeconds(FPlatformTime::Seconds())
	{
	}

	FOperationDurationScope::~FOperationDurationScope()
	{
		Result.SetData(TEXT("duration_seconds"), FString::Printf(TEXT("%.3f"), GetElapsedSeconds()));
	}

	double FOperationDurationScope::GetElapsedSeconds() const
	{
		return FPlatformTime::Seconds() - StartSeconds;
	}
}
