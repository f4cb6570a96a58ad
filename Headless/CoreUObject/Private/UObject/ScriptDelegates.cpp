#include "UObject/ScriptDelegates.h"
#include "UObject/Object.h"
#include "UObject/Class.h"

// FScriptDelegate

void FScriptDelegate::BindUFunction(UObject* InObject, const FName& InFunctionName)
{
	Object = InObject;
	FunctionName = InFunctionName;
}

bool FScriptDelegate::IsBound() const
{
	if (FunctionName.IsNone())
	{
		return false;
	}
	const UObject* BoundObject = Object.Get();
	return BoundObject && BoundObject->FindFunction(FunctionName) != nullptr;
}

bool FScriptDelegate::IsBoundToObject(const void* InUserObject) const
{
	return InUserObject && Object.Get() == InUserObject;
}

bool FScriptDelegate::IsBoundToObjectEvenIfUnreachable(const void* InUserObject) const
{
	return InUserObject && Object.Get(true) == InUserObject;
}

bool FScriptDelegate::IsCompactable() const
{
	return FunctionName.IsNone() || !Object.Get(true);
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
	return TEXT("<Unbound>");
}

void FScriptDelegate::ProcessDelegateInternal(void* Parameters) const
{
	UObject* BoundObject = Object.Get();
	check(BoundObject && !FunctionName.IsNone());
	BoundObject->ProcessEvent(BoundObject->FindFunctionChecked(FunctionName), Parameters);
}

// FMulticastScriptDelegate

bool FMulticastScriptDelegate::Contains(const FScriptDelegate& InDelegate) const
{
	return Contains(InDelegate.GetUObject(), InDelegate.GetFunctionName());
}

bool FMulticastScriptDelegate::Contains(const UObject* InObject, FName InFunctionName) const
{
	return InvocationList.ContainsByPredicate([&](const FScriptDelegate& Delegate)
	{
		return Delegate.GetFunctionName() == InFunctionName && Delegate.IsBoundToObjectEvenIfUnreachable(InObject);
	});
}

void FMulticastScriptDelegate::Add(const FScriptDelegate& InDelegate)
{
	CompactInvocationList();
	InvocationList.Add(InDelegate);
}

void FMulticastScriptDelegate::AddUnique(const FScriptDelegate& InDelegate)
{
	InvocationList.AddUnique(InDelegate);
	CompactInvocationList();
}

void FMulticastScriptDelegate::Remove(const FScriptDelegate& InDelegate)
{
	InvocationList.RemoveSingleSwap(InDelegate);
	CompactInvocationList();
}

void FMulticastScriptDelegate::Remove(const UObject* InObject, FName InFunctionName)
{
	const int32 Index = InvocationList.IndexOfByPredicate([&](const FScriptDelegate& Delegate)
	{
		return Delegate.GetFunctionName() == InFunctionName && Delegate.IsBoundToObjectEvenIfUnreachable(InObject);
	});
	if (Index != INDEX_NONE)
	{
		InvocationList.RemoveAtSwap(Index);
	}
	CompactInvocationList();
}

void FMulticastScriptDelegate::RemoveAll(const UObject* InObject)
{
	for (int32 Index = InvocationList.Num() - 1; Index >= 0; --Index)
	{
		const FScriptDelegate& Delegate = InvocationList[Index];
		if (Delegate.IsBoundToObject(InObject) || Delegate.IsCompactable())
		{
			InvocationList.RemoveAtSwap(Index);
		}
	}
}

void FMulticastScriptDelegate::CompactInvocationList() const
{
	InvocationList.RemoveAllSwap([](const FScriptDelegate& Delegate) { return Delegate.IsCompactable(); });
}

FString FMulticastScriptDelegate::ToStringInternal() const
{
	if (!IsBound())
	{
		return TEXT("<Unbound>");
	}
	FString Result = TEXT("[");
	for (int32 Index = 0; Index < InvocationList.Num(); ++Index)
	{
		if (Index > 0)
		{
			Result += TEXT(", ");
		}
		Result += InvocationList[Index].ToString<UObject>();
	}
	Result += TEXT("]");
	return Result;
}

void FMulticastScriptDelegate::ProcessMulticastDelegateInternal(void* Parameters) const
{
	// A copy: a called function may change the list.
	const FInvocationList Copy = InvocationList;
	for (const FScriptDelegate& Delegate : Copy)
	{
		if (Delegate.IsBound())
		{
			Delegate.ProcessDelegate<UObject>(Parameters);
		}
		else if (Delegate.IsCompactable())
		{
			InvocationList.RemoveSingleSwap(Delegate);
		}
	}
}

TArray<UObject*> FMulticastScriptDelegate::GetAllObjects() const
{
	TArray<UObject*> Result;
	for (const FScriptDelegate& Delegate : InvocationList)
	{
		if (UObject* Object = Delegate.GetUObject())
		{
			Result.Add(Object);
		}
	}
	return Result;
}
