#include "UObject/ScriptDelegates.h"
#include "UObject/Object.h"

void FScriptDelegate::BindUFunction(UObject* InObject, const FName& InFunctionName)
{
	Object = InObject;
	FunctionName = InFunctionName;
}

bool FScriptDelegate::IsBound() const
{
	return !FunctionName.IsNone() && Object.Get() != nullptr;
}

bool FScriptDelegate::IsBoundToObject(const void* InUserObject) const
{
	return InUserObject && Object.Get() == InUserObject;
}

void FScriptDelegate::Unbind()
{
	Object.Reset();
	FunctionName = FName();
}

FString FScriptDelegate::ToStringInternal() const
{
	if (IsBound())
	{
		return Object.Get()->GetPathName() + TEXT(".") + FunctionName.ToString();
	}
	return TEXT("(null)");
}

bool FMulticastScriptDelegate::Contains(const UObject* InObject, FName InFunctionName) const
{
	return InvocationList.ContainsByPredicate([&](const FScriptDelegate& Delegate) { return Delegate.GetUObject() == InObject && Delegate.GetFunctionName() == InFunctionName; });
}

void FMulticastScriptDelegate::Add(const FScriptDelegate& InDelegate)
{
	InvocationList.Add(InDelegate);
}

void FMulticastScriptDelegate::AddUnique(const FScriptDelegate& InDelegate)
{
	InvocationList.AddUnique(InDelegate);
}

void FMulticastScriptDelegate::Remove(const FScriptDelegate& InDelegate)
{
	InvocationList.Remove(InDelegate);
}

void FMulticastScriptDelegate::Remove(const UObject* InObject, FName InFunctionName)
{
	InvocationList.RemoveAll([&](const FScriptDelegate& Delegate) { return Delegate.GetUObject() == InObject && Delegate.GetFunctionName() == InFunctionName; });
}

void FMulticastScriptDelegate::RemoveAll(const UObject* InObject)
{
	InvocationList.RemoveAll([&](const FScriptDelegate& Delegate) { return Delegate.GetUObject() == InObject; });
}

FString FMulticastScriptDelegate::ToStringInternal() const
{
	// As the engine writes multicast values: bound entries by object name, comma separated, in parentheses.
	FString Result = TEXT("(");
	bool bFirst = true;
	for (const FScriptDelegate& Delegate : InvocationList)
	{
		if (!Delegate.IsBound())
		{
			continue;
		}
		if (!bFirst)
		{
			Result += TEXT(",");
		}
		bFirst = false;
		Result += Delegate.GetUObject()->GetName() + TEXT(".") + Delegate.GetFunctionName().ToString();
	}
	Result += TEXT(")");
	return Result;
}

TArray<UObject*> FMulticastScriptDelegate::GetAllObjects() const
{
	TArray<UObject*> Result;
	for (const FScriptDelegate& Delegate : InvocationList)
	{
		if (UObject* Object = Delegate.GetUObject())
		{
			Result.AddUnique(Object);
		}
	}
	return Result;
}
