#pragma once

#include "UObject/Object.h"
#include "UObject/Class.h"

/**
 * The base of interface classes (UMyInterface; CLASS_Interface). The native side of an interface is a
 * plain C++ class (IMyInterface) that implementing classes also derive from.
 */
class COREUOBJECT_API UInterface : public UObject
{
	DECLARE_CLASS(UInterface, UObject, CLASS_Abstract | CLASS_Interface | CLASS_Intrinsic, CASTCLASS_None, TEXT("/Script/CoreUObject"), NO_API)

public:
	UInterface() = default;
	explicit UInterface(const FObjectInitializer& ObjectInitializer) : UObject(ObjectInitializer) {}
};

/** The native side of UInterface. */
class COREUOBJECT_API IInterface
{
protected:
	virtual ~IInterface() = default;

public:
	using UClassType = UInterface;
};
