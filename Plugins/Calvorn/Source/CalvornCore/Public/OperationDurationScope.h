#pragma once

#include "CoreMinimal.h"

namespace Calvorn
{
	class FToolResult;

	/**
	 * Measures an operation from its start to every way out: on destruction it sets the data field
	 * "duration_seconds" to the elapsed seconds as text with three decimals ("0.042").
	 */
	class CALVORNCORE_API FOperationDurationScope
	{
	public:
		explicit FOperationDurationScope(FToolResult& InResult);
		~FOperationDurationScope();

		/** Seconds since the scope began. */
		[[nodiscard]] double GetElapsedSeconds() const;

		FOperationDurationScope(const FOperationDurationScope&) = delete;
		FOperationDurationScope& operator=(const FOperationDurationScope&) = delete;

	private:
		FToolResult& Result;
		double StartSeconds;
	};
}

using Calvorn::FOperationDurationScope;
