#pragma once

// C++ classes with reflected members shared by the object system's tests.

#include "CoreUObject.h"
#include "../Core/StringTestUtils.h"

/** A node-like class with one reflected member of most kinds. */
class UTestReflectedObject : public UObject
{
	DECLARE_CLASS(UTestReflectedObject, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/CoreUObjectTests"), NO_API)

public:
	UTestReflectedObject() = default;

	int32 Count = 7;
	FString Label = TEXT("Default label");
	bool bEnabled = true;
	float Weight = 1.5f;
	double Precise = 0.25;
	FName Tag = TEXT("Alpha");
	TArray<FString> Notes;
	TObjectPtr<UObject> Target;
	FVector Location = FVector(1.0, 2.0, 3.0);
	int64 BigNumber = 0;
	uint8 Mode = 0;
};

/** A subclass adding one member, to check inheritance of reflection. */
class UTestReflectedChild : public UTestReflectedObject
{
	DECLARE_CLASS(UTestReflectedChild, UTestReflectedObject, CLASS_None, CASTCLASS_None, TEXT("/Script/CoreUObjectTests"), NO_API)

public:
	UTestReflectedChild() = default;

	FString ChildOnly = TEXT("Child");
};

/** An abstract class: objects of it cannot be made. */
class UTestAbstractObject : public UObject
{
	DECLARE_CLASS(UTestAbstractObject, UObject, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/CoreUObjectTests"), NO_API)
};

/** Counts constructions and destructions, to check object lifetime. */
class UTestLifetimeObject : public UObject
{
	DECLARE_CLASS(UTestLifetimeObject, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/CoreUObjectTests"), NO_API)

public:
	UTestLifetimeObject() { ++Constructed; }
	virtual ~UTestLifetimeObject() override { ++Destroyed; }
	virtual void PostInitProperties() override
	{
		Super::PostInitProperties();
		bPostInitCalled = true;
	}

	static inline int32 Constructed = 0;
	static inline int32 Destroyed = 0;
	bool bPostInitCalled = false;
	TObjectPtr<UObject> Other;
};

/** An interface, with its native side. */
class UTestInterface : public UInterface
{
	DECLARE_CLASS(UTestInterface, UInterface, CLASS_Abstract | CLASS_Interface, CASTCLASS_None, TEXT("/Script/CoreUObjectTests"), NO_API)
};

class ITestInterface
{
public:
	using UClassType = UTestInterface;
	virtual ~ITestInterface() = default;
	virtual int32 GetAnswer() const = 0;
};

/** Implements the interface natively, and makes a default subobject in its constructor. */
class UTestOwnerObject : public UObject, public ITestInterface
{
	DECLARE_CLASS(UTestOwnerObject, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/CoreUObjectTests"), NO_API)

public:
	UTestOwnerObject()
	{
		Component = CreateDefaultSubobject<UTestReflectedObject>(TEXT("Component"));
	}

	virtual int32 GetAnswer() const override { return 42; }

	TObjectPtr<UTestReflectedObject> Component;
};
