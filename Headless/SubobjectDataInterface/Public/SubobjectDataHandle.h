#pragma once

#include "CoreMinimal.h"
#include "Templates/SharedPointer.h"

struct FSubobjectData;

/** Names one subobject (the actor or one of its components) within a gathered hierarchy. */
struct FSubobjectDataHandle
{
	FSubobjectDataHandle() = default;
	explicit FSubobjectDataHandle(TSharedPtr<FSubobjectData> InData) : DataPtr(MoveTemp(InData)) {}

	bool IsValid() const { return DataPtr.IsValid(); }
	FSubobjectData* GetData() const { return DataPtr.Get(); }
	const TSharedPtr<FSubobjectData>& GetSharedDataPtr() const { return DataPtr; }

	bool operator==(const FSubobjectDataHandle& Other) const { return DataPtr == Other.DataPtr; }
	bool operator!=(const FSubobjectDataHandle& Other) const { return !(*this == Other); }

	SUBOBJECTDATAINTERFACE_API static const FSubobjectDataHandle InvalidHandle;

private:
	TSharedPtr<FSubobjectData> DataPtr;
};
