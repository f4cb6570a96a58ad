#include "CalvornSettings.h"

#include "Misc/ConfigCacheIni.h"
#include "Misc/Paths.h"
#include "UObject/Class.h"
#include "UObject/UnrealType.h"
#include "UObject/FieldIterator.h"

IMPLEMENT_CLASS(UCalvornSettings,
	// "config = Editor": the header tool would record it; here the registration does.
	Class->ClassConfigName = FName(TEXT("Editor"));
	UE_NATIVE_PROPERTY(FBoolProperty, bFocusOnNewNodes, CPF_Config | CPF_Edit, 0, (uint32)sizeof(bool), true);
)

namespace
{
	/**
	 * The config properties' values as the C++ constructor left them, taken from the class default
	 * object before config is first applied, so that a reload starts again from them: a key removed
	 * from the file then gives back the built-in value instead of the one read last time.
	 */
	const TMap<FString, FString>& GetBuiltInValues(UCalvornSettings* DefaultObject)
	{
		static TMap<FString, FString> Values;
		static bool bCaptured = false;
		if (!bCaptured)
		{
			bCaptured = true;
			for (TFieldIterator<FProperty> It(UCalvornSettings::StaticClass()); It; ++It)
			{
				if (It->HasAnyPropertyFlags(CPF_Config))
				{
					FString Text;
					It->ExportTextItem_InContainer(Text, DefaultObject, nullptr, DefaultObject, PPF_None);
					Values.Add(It->GetName(), Text);
				}
			}
		}
		return Values;
	}
}

FString UCalvornSettings::GetConfigFileName()
{
	// The class is "config = Editor, defaultconfig": its values live in the project's DefaultEditor.ini.
	return TEXT("DefaultEditor.ini");
}

FString UCalvornSettings::GetConfigSectionName()
{
	return StaticClass()->GetPathName();
}

bool UCalvornSettings::ReloadConfig(TArray<FString>* OutErrors)
{
	UCalvornSettings* DefaultObject = GetMutableDefault<UCalvornSettings>();
	const TMap<FString, FString>& BuiltInValues = GetBuiltInValues(DefaultObject);

	FString Filename;
	if (FPaths::IsProjectFilePathSet())
	{
		Filename = FPaths::Combine(FPaths::ProjectConfigDir(), GetConfigFileName());
		// The file may have changed since it was last read (a reopened project, an edit by hand).
		GConfig->LoadFile(Filename);
	}
	const FString Section = GetConfigSectionName();

	bool bAllRead = true;
	for (TFieldIterator<FProperty> It(GetClass()); It; ++It)
	{
		FProperty* Property = *It;
		if (!Property->HasAnyPropertyFlags(CPF_Config))
		{
			continue;
		}
		const FString Name = Property->GetName();
		// An object other than the default starts from the default object, as the engine's objects do.
		if (this != DefaultObject)
		{
			Property->CopyCompleteValue_InContainer(this, DefaultObject);
		}
		else if (const FString* BuiltIn = BuiltInValues.Find(Name))
		{
			Property->ImportText_InContainer(**BuiltIn, this, this, PPF_None);
		}

		FString Value;
		if (Filename.IsEmpty() || !GConfig->GetString(*Section, *Name, Value, Filename))
		{
			continue;
		}
		void* ValuePtr = Property->ContainerPtrToValuePtr<void>(this);
		const TCHAR* End = Property->ImportText_Direct(*Value, ValuePtr, this, PPF_None);
		if (!End)
		{
			bAllRead = false;
			if (this != DefaultObject)
			{
				Property->CopyCompleteValue_InContainer(this, DefaultObject);
			}
			else if (const FString* BuiltIn = BuiltInValues.Find(Name))
			{
				Property->ImportText_InContainer(**BuiltIn, this, this, PPF_None);
			}
			if (OutErrors)
			{
				OutErrors->Add(FString::Printf(TEXT("%s: [%s] %s=%s is not a valid value; the default is kept"), *Filename, *Section, *Name, *Value));
			}
		}
	}
	return bAllRead;
}
