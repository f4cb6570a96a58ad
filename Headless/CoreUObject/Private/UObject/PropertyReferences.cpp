#include "UObject/UnrealType.h"
#include "UObject/EnumProperty.h"
#include "UObject/Class.h"
#include "ObjectRegistry.h"

namespace UE::CoreUObject::Private
{
	void ForEachObjectReference(const FProperty* Property, void* Value, TFunctionRef<void(UObject*& Reference)> Visitor)
	{
		if (!Property || !Value)
		{
			return;
		}
		if (CastField<FObjectProperty>(Property))
		{
			// TObjectPtr is laid out as a raw pointer.
			Visitor(*(UObject**)Value);
		}
		else if (CastField<FInterfaceProperty>(Property))
		{
			FScriptInterface& Interface = *(FScriptInterface*)Value;
			UObject*& Object = Interface.GetObjectRef();
			Visitor(Object);
			if (!Object)
			{
				Interface.SetInterface(nullptr);
			}
		}
		else if (const FStructProperty* StructProperty = CastField<FStructProperty>(Property))
		{
			if (StructProperty->Struct)
			{
				ForEachObjectReferenceInStruct(StructProperty->Struct, Value, Visitor);
			}
		}
		else if (const FArrayProperty* ArrayProperty = CastField<FArrayProperty>(Property))
		{
			FScriptArrayHelper Helper(ArrayProperty, Value);
			for (int32 Index = 0; Index < Helper.Num(); ++Index)
			{
				ForEachObjectReference(ArrayProperty->Inner, Helper.GetRawPtr(Index), Visitor);
			}
		}
		else if (const FSetProperty* SetProperty = CastField<FSetProperty>(Property))
		{
			FScriptSetHelper Helper(SetProperty, Value);
			for (int32 Index = 0; Index < Helper.Num(); ++Index)
			{
				ForEachObjectReference(SetProperty->ElementProp, Helper.GetElementPtr(Index), Visitor);
			}
		}
		else if (const FMapProperty* MapProperty = CastField<FMapProperty>(Property))
		{
			FScriptMapHelper Helper(MapProperty, Value);
			for (int32 Index = 0; Index < Helper.Num(); ++Index)
			{
				ForEachObjectReference(MapProperty->KeyProp, Helper.GetKeyPtr(Index), Visitor);
				ForEachObjectReference(MapProperty->ValueProp, Helper.GetValuePtr(Index), Visitor);
			}
		}
	}

	void ForEachObjectReferenceInStruct(const UStruct* Struct, void* Container, TFunctionRef<void(UObject*& Reference)> Visitor)
	{
		for (FProperty* Property = Struct->RefLink; Property; Property = Property->NextRef)
		{
			for (int32 Index = 0; Index < Property->GetArrayDim(); ++Index)
			{
				ForEachObjectReference(Property, Property->ContainerPtrToValuePtr<void>(Container, Index), Visitor);
			}
		}
	}

	void ForEachTypeReference(const FProperty* Property, TFunctionRef<void(UObject* Type)> Visitor)
	{
		if (!Property)
		{
			return;
		}
		if (const FObjectPropertyBase* Object = CastField<FObjectPropertyBase>(Property))
		{
			Visitor(Object->PropertyClass);
			if (const FClassProperty* Class = CastField<FClassProperty>(Property))
			{
				Visitor(Class->MetaClass);
			}
			if (const FSoftClassProperty* SoftClass = CastField<FSoftClassProperty>(Property))
			{
				Visitor(SoftClass->MetaClass);
			}
		}
		else if (const FInterfaceProperty* Interface = CastField<FInterfaceProperty>(Property))
		{
			Visitor(Interface->InterfaceClass);
		}
		else if (const FStructProperty* Struct = CastField<FStructProperty>(Property))
		{
			Visitor(Struct->Struct);
		}
		else if (const FByteProperty* Byte = CastField<FByteProperty>(Property))
		{
			Visitor(Byte->Enum);
		}
		else if (const FEnumProperty* Enum = CastField<FEnumProperty>(Property))
		{
			Visitor(Enum->GetEnum());
		}
		else if (const FDelegateProperty* Delegate = CastField<FDelegateProperty>(Property))
		{
			Visitor(Delegate->SignatureFunction);
		}
		else if (const FMulticastDelegateProperty* Multicast = CastField<FMulticastDelegateProperty>(Property))
		{
			Visitor(Multicast->SignatureFunction);
		}
		else if (const FArrayProperty* Array = CastField<FArrayProperty>(Property))
		{
			ForEachTypeReference(Array->Inner, Visitor);
		}
		else if (const FSetProperty* Set = CastField<FSetProperty>(Property))
		{
			ForEachTypeReference(Set->ElementProp, Visitor);
		}
		else if (const FMapProperty* Map = CastField<FMapProperty>(Property))
		{
			ForEachTypeReference(Map->KeyProp, Visitor);
			ForEachTypeReference(Map->ValueProp, Visitor);
		}
	}
}
