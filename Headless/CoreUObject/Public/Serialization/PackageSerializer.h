#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"
#include "UObject/TopLevelAssetPath.h"

class FJsonObject;
class FJsonValue;
class UClass;
class UObject;
class UPackage;

/**
 * How objects are written to and read from headless package files. Headless only: the engine writes
 * binary packages through FLinkerSave/FLinkerLoad; the headless editor writes text.
 *
 * Each object of a package is one JSON object in the file's "objects" array, in creation order
 * (an object's outer and an in-package class always come before it):
 *
 *   {
 *   	"name": "EventGraph",
 *   	"class": "/Script/Engine.EdGraph",
 *   	"outer": "BP_Door",                      path inside the package; "" is the package itself
 *   	"flags": "RF_Public|RF_Transactional",   the flags worth keeping (RF_Load)
 *   	"properties": { "Name": "exported text", "Array(2)": "element 2 of a C array" }
 *   }
 *
 * What goes into an object's entry besides name, class, outer and flags is up to the serializer
 * registered for its class (the most derived registered class wins). The layer that owns a kind of
 * asset registers one at start-up, e.g. the Blueprint editor for UBlueprint and graph nodes; every
 * other class uses FPropertyPackageSerializer, which writes each property whose value differs from
 * the object's archetype with FProperty::ExportText_Direct and reads it back with ImportText_Direct.
 */
namespace UE::Headless
{
	/** What a serializer can ask and record while its objects are written. */
	class FPackageSaveContext
	{
	public:
		FPackageSaveContext(UPackage* InPackage, const FString& InFilename)
			: Package(InPackage)
			, Filename(InFilename)
		{
		}

		UPackage* GetPackage() const { return Package; }
		const FString& GetFilename() const { return Filename; }

		/** Records that the package references another one; references to itself and to /Script/, /Memory/ and /Temp/ are left out. */
		COREUOBJECT_API void AddDependency(FName PackageName);
		/**
		 * Records the package of a referenced object as a dependency. A reference to an object that is
		 * never saved (transient, or in the transient package) fails the save: it could not be read back.
		 */
		COREUOBJECT_API void AddReferencedObject(const UObject* Object);
		/** Records the packages of every object and soft path a property value holds (inside structs and containers too). */
		COREUOBJECT_API void AddReferencesInValue(const class FProperty* Property, const void* Value);

		/** The packages referenced so far, in the order first seen. */
		const TArray<FName>& GetDependencies() const { return Dependencies; }

		/** Fails the save. Say what is wrong; the writer adds the package and the file. */
		void AddError(const FString& Error) { Errors.Add(Error); }
		bool HasErrors() const { return Errors.Num() > 0; }
		const TArray<FString>& GetErrors() const { return Errors; }

	private:
		UPackage* Package;
		FString Filename;
		TArray<FName> Dependencies;
		TArray<FString> Errors;
	};

	/** What a serializer can ask and report while its objects are read. */
	class FPackageLoadContext
	{
	public:
		FPackageLoadContext(UPackage* InPackage, const FString& InFilename)
			: Package(InPackage)
			, Filename(InFilename)
		{
		}

		UPackage* GetPackage() const { return Package; }
		const FString& GetFilename() const { return Filename; }

		/** Fails the load. Say what is wrong; the loader adds the package, the file and the object. */
		void AddError(const FString& Error) { Errors.Add(Error); }
		bool HasErrors() const { return Errors.Num() > 0; }
		const TArray<FString>& GetErrors() const { return Errors; }

	private:
		UPackage* Package;
		FString Filename;
		TArray<FString> Errors;
	};

	/** Writes and reads the objects of one kind. */
	class IPackageSerializer
	{
	public:
		virtual ~IPackageSerializer() = default;

		/** Whether the object goes into the file; transient objects never do. Objects inside a left-out object are left out too. */
		virtual bool ShouldSaveObject(const UObject& Object) const { return true; }

		/** Writes the object's state into OutEntry ("name", "class", "outer" and "flags" are already there). */
		virtual void SaveObject(const UObject& Object, FJsonObject& OutEntry, FPackageSaveContext& Context) const = 0;

		/**
		 * Reads back what SaveObject wrote into Object, which exists with its name, class, outer and
		 * flags. Every object of the package exists at this point, so references between them resolve.
		 */
		virtual void LoadObject(UObject& Object, const FJsonObject& Entry, FPackageLoadContext& Context) const = 0;

		/** After every object of the package was read, in file order. By default calls the object's PostLoad. */
		COREUOBJECT_API virtual void PostLoadObject(UObject& Object, FPackageLoadContext& Context) const;
	};

	/** The default serializer: properties that differ from the archetype, as the engine's export text. */
	class FPropertyPackageSerializer : public IPackageSerializer
	{
	public:
		COREUOBJECT_API virtual void SaveObject(const UObject& Object, FJsonObject& OutEntry, FPackageSaveContext& Context) const override;
		COREUOBJECT_API virtual void LoadObject(UObject& Object, const FJsonObject& Entry, FPackageLoadContext& Context) const override;

		/**
		 * Writes into OutProperties every property of Object whose value differs from its archetype
		 * ("Name", or "Name(i)" per differing element of a C array), skipping transient ones, and records
		 * what they reference. Custom serializers call this for the reflected part of their objects.
		 */
		static COREUOBJECT_API void SaveProperties(const UObject& Object, FJsonObject& OutProperties, FPackageSaveContext& Context);

		/** Reads what SaveProperties wrote; unknown properties and unreadable values are errors. */
		static COREUOBJECT_API void LoadProperties(UObject& Object, const FJsonObject& Properties, FPackageLoadContext& Context);
	};

	/** The serializers by class. */
	class FPackageSerializerRegistry
	{
	public:
		static COREUOBJECT_API FPackageSerializerRegistry& Get();

		/** Objects of the class and of its subclasses (unless one has its own) go through Serializer. Replaces an earlier registration. */
		COREUOBJECT_API void Register(const FTopLevelAssetPath& ClassPath, TSharedRef<IPackageSerializer> Serializer);
		COREUOBJECT_API void Unregister(const FTopLevelAssetPath& ClassPath);

		/** The serializer of the nearest registered class in Class's super chain, or the property serializer. */
		COREUOBJECT_API const IPackageSerializer& FindSerializer(const UClass* Class) const;

	private:
		TArray<TPair<FTopLevelAssetPath, TSharedRef<IPackageSerializer>>> Serializers;
		FPropertyPackageSerializer DefaultSerializer;
	};

	/** The object's path inside its package: "Asset", "Asset:Sub", "Asset:Sub.Deeper" (empty for the package). */
	COREUOBJECT_API FString GetPathInPackage(const UObject* Object);

	/** The persisted flags (RF_Load) as "RF_Public|RF_Standalone", in the flags' bit order; "" for none. */
	COREUOBJECT_API FString PersistedObjectFlagsToString(EObjectFlags Flags);
	/** Reads PersistedObjectFlagsToString's text; false for an unknown or non-persisted flag name. */
	COREUOBJECT_API bool PersistedObjectFlagsFromString(const FString& Text, EObjectFlags& OutFlags, FString& OutBadName);
}
