target_sources(zdm PRIVATE
  BytesStream.cpp
  CompoundFile.cpp
  CompoundFileCheck.cpp
  StorageFile.cpp
  StorageReplace.cpp)
if(NOT WIN32)
  target_sources(zdm PRIVATE
    portable/ContentStream.cpp
    portable/FileStream.cpp
    portable/GsfWriter.cpp
    portable/MemoryStream.cpp
    portable/StorageDescriptor.cpp
    portable/StorageDoors.cpp
    portable/StorageEnum.cpp
    portable/StorageError.cpp
    portable/StorageObject.cpp
    portable/StorageSave.cpp
    portable/StorageSource.cpp
    portable/StorageStream.cpp
    portable/StorageTree.cpp
    portable/StreamContent.cpp)
endif()
