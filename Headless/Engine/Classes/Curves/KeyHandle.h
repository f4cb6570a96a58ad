#pragma once

#include "CoreMinimal.h"

/** A key's identity in a curve, stable while other keys are added or removed. */
struct FKeyHandle
{
	ENGINE_API FKeyHandle();
	explicit FKeyHandle(uint32 SpecificIndex) : Index(SpecificIndex) {}

	static FKeyHandle Invalid() { return FKeyHandle(0u); }
	bool IsValid() const { return Index != 0; }

	bool operator==(const FKeyHandle& Other) const { return Index == Other.Index; }
	bool operator!=(const FKeyHandle& Other) const { return Index != Other.Index; }
	friend uint32 GetTypeHash(const FKeyHandle& Handle) { return GetTypeHash(Handle.Index); }

private:
	uint32 Index;
};
