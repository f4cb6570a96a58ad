#pragma once

#include "UObject/Class.h"
#include "UObject/Field.h"
// The deprecation filter reads property flags, so FProperty must be complete here.
#include "UObject/UnrealType.h"

/** Options of TFieldIterator. */
namespace EFieldIteratorFlags
{
	enum SuperClassFlags
	{
		ExcludeSuper = 0,
		IncludeSuper
	};
	enum DeprecatedPropertyFlags
	{
		ExcludeDeprecated = 0,
		IncludeDeprecated
	};
	enum InterfaceClassFlags
	{
		ExcludeInterfaces = 0,
		IncludeInterfaces
	};
}

/**
 * Walks the fields of type T (a property kind such as FProperty, or UFunction) of a struct: its own, in
 * declaration order, then (with IncludeSuper) its super struct's, and so on up the chain. With
 * IncludeInterfaces, a class's functions are followed by those of its interfaces.
 */
template <class T>
class TFieldIterator
{
public:
	TFieldIterator(const UStruct* InStruct, EFieldIteratorFlags::SuperClassFlags InSuperClassFlags = EFieldIteratorFlags::IncludeSuper,
		EFieldIteratorFlags::DeprecatedPropertyFlags InDeprecatedFieldFlags = EFieldIteratorFlags::IncludeDeprecated,
		EFieldIteratorFlags::InterfaceClassFlags InInterfaceFieldFlags = EFieldIteratorFlags::ExcludeInterfaces)
		: Struct(InStruct), bIncludeSuper(InSuperClassFlags == EFieldIteratorFlags::IncludeSuper),
		  bIncludeDeprecated(InDeprecatedFieldFlags == EFieldIteratorFlags::IncludeDeprecated),
		  bIncludeInterfaces(InInterfaceFieldFlags == EFieldIteratorFlags::IncludeInterfaces)
	{
		if (Struct)
		{
			Field = FirstOf(Struct);
		}
		IterateToNext();
	}

	explicit operator bool() const { return Field != nullptr; }
	bool operator!() const { return Field == nullptr; }

	TFieldIterator& operator++()
	{
		Field = NextOf(Field);
		IterateToNext();
		return *this;
	}

	T* operator*() const { return (T*)Field; }
	T* operator->() const { return (T*)Field; }

	/** The struct declaring the current field. */
	const UStruct* GetStruct() const { return Struct; }

	friend bool operator==(const TFieldIterator& A, const TFieldIterator& B) { return A.Field == B.Field; }
	friend bool operator!=(const TFieldIterator& A, const TFieldIterator& B) { return A.Field != B.Field; }

private:
	static constexpr bool bIsObjectField = std::is_base_of_v<UField, T>;
	using FieldPtr = std::conditional_t<bIsObjectField, UField*, FField*>;

	static FieldPtr FirstOf(const UStruct* InStruct)
	{
		if constexpr (bIsObjectField)
		{
			return InStruct->Children;
		}
		else
		{
			return InStruct->ChildProperties;
		}
	}

	static FieldPtr NextOf(FieldPtr InField) { return InField->Next; }

	bool Accepts(FieldPtr InField) const
	{
		if constexpr (bIsObjectField)
		{
			return InField->IsA(T::StaticClass());
		}
		else
		{
			if (!InField->template IsA<T>())
			{
				return false;
			}
			if (!bIncludeDeprecated)
			{
				if (const FProperty* Property = CastField<FProperty>(InField))
				{
					return !Property->HasAllPropertyFlags(CPF_Deprecated);
				}
			}
			return true;
		}
	}

	void IterateToNext();

	const UStruct* Struct = nullptr;
	FieldPtr Field = nullptr;
	bool bIncludeSuper;
	bool bIncludeDeprecated;
	bool bIncludeInterfaces;
	int32 InterfaceIndex = -1;
	const UClass* InterfaceOwner = nullptr;
};

template <class T>
void TFieldIterator<T>::IterateToNext()
{
	while (Struct)
	{
		while (Field)
		{
			if (Accepts(Field))
			{
				return;
			}
			Field = NextOf(Field);
		}

		if (bIncludeInterfaces && bIsObjectField)
		{
			// After a class's own functions come those of each interface it lists.
			const UClass* Owner = InterfaceOwner ? InterfaceOwner : (Struct->IsA(UClass::StaticClass()) ? (const UClass*)Struct : nullptr);
			if (Owner && InterfaceIndex + 1 < Owner->Interfaces.Num())
			{
				InterfaceOwner = Owner;
				++InterfaceIndex;
				if (const UClass* Interface = Owner->Interfaces[InterfaceIndex].Class)
				{
					Field = FirstOf(Interface);
				}
				continue;
			}
			InterfaceIndex = -1;
			InterfaceOwner = nullptr;
		}

		if (!bIncludeSuper)
		{
			Struct = nullptr;
			return;
		}
		Struct = Struct->GetSuperStruct();
		if (Struct)
		{
			Field = FirstOf(Struct);
		}
	}
	Field = nullptr;
}
