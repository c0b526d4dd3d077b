/// The module's entries, reference counts and registration.
#include "iclass_factory.h"
#include "module_fixture.h"
#include "register_module.h"

namespace {

TEST_F(ModuleTest, FactoryAnswersItsIdsWithOneObjectAndOutlivesAnUnknownOne) {
    const auto id = [](std::string_view text) { return InterfaceId::FromText(text).value(); };
    EXPECT_EQ(m_GetFactoryInterface(nullptr), nullptr);
    EXPECT_EQ(CallEntry(kCanUnloadNowEntry), kResultOk);
    const std::pair<InterfaceId, bool> kRows[] = {
        {id("{349C1E8C-81EE-4B36-9697-8384E1CE2FDF}"), false}, // the application's: makes a factory
        {id("{BCE7B94E-CEB8-4B55-A72A-03775783EAD6}"), true},
        {id("{8BC9E5C1-17F4-11D3-9591-0000C0DB3E0F}"), true},
        {id("{6E95B8F0-BCBF-11D4-A3C0-00010235134F}"), true},
        {id("{00000000-0000-0000-C000-000000000046}"), true},
        {id("{4C958AF9-36BE-4B70-A715-DA9F9B1D24E7}"), false}, // the class's
        {id("{00000001-0000-0000-C000-000000000046}"), false},
        {InterfaceId{}, false}};
    IUnknown* factory = nullptr;
    std::uint32_t references = 0;
    for (const auto& [givenId, answered] : kRows) {
        auto* const answer = static_cast<IUnknown*>(m_GetFactoryInterface(&givenId));
        ASSERT_EQ(answer != nullptr, answered) << givenId.ToText();
        EXPECT_EQ(CallEntry(kCanUnloadNowEntry), kResultFalse);
        references += answered;
        if (!answer)
            continue;
        factory = factory ? factory : answer;
        EXPECT_EQ(answer, factory);
    }
    while (references > 0)
        EXPECT_EQ(factory->Release(), --references);
    EXPECT_EQ(CallEntry(kCanUnloadNowEntry), kResultOk);
}

TEST_F(ModuleTest, ClassObjectYieldsTheSingleFactory) {
    std::remove_pointer_t<GetClassObjectEntry>* getClassObject = nullptr;
    ASSERT_TRUE(m_Module.Find(kGetClassObjectEntry, getClassObject));
    void* object = this;
    EXPECT_EQ(getClassObject(&kNetlistFactoryClassId, &kClassFactoryId, nullptr), kResultPointer);
    EXPECT_EQ(getClassObject(nullptr, &kClassFactoryId, &object), kResultPointer);
    EXPECT_EQ(getClassObject(&kNetlistFactoryId, &kClassFactoryId, &object),
              kResultClassNotAvailable);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(getClassObject(&kNetlistFactoryClassId, &kFactoryId, &object), kResultNoInterface);
    ASSERT_EQ(getClassObject(&kNetlistFactoryClassId, &kClassFactoryId, &object), kResultOk);
    auto* const classObject = static_cast<IClassFactory*>(object);
    EXPECT_EQ(CallEntry(kCanUnloadNowEntry), kResultFalse);

    EXPECT_EQ(classObject->CreateInstance(classObject, kFactoryId, &object), kResultNoAggregation);
    ASSERT_EQ(classObject->CreateInstance(nullptr, kFactoryId, &object), kResultOk);
    EXPECT_EQ(object, m_GetFactoryInterface(&kUnknownId));
    auto* const factory = static_cast<IFactory*>(object);
    EXPECT_EQ(factory->Release(), 1u);
    EXPECT_EQ(factory->Release(), 0u);

    classObject->LockServer(true);
    EXPECT_EQ(classObject->Release(), 0u);
    EXPECT_EQ(CallEntry(kCanUnloadNowEntry), kResultFalse);
    classObject->LockServer(false);
    EXPECT_EQ(CallEntry(kCanUnloadNowEntry), kResultOk);
}

TEST_F(ModuleTest, RegistrationIsWrittenAndRemoved) {
    constexpr std::string_view kClass = "{4C958AF9-36BE-4B70-A715-DA9F9B1D24E7}";
    ASSERT_EQ(CallEntry(kRegisterServerEntry), kResultOk);
    sys::ModuleRegistration registration;
    ASSERT_TRUE(sys::ReadRegistration(kClass, registration));
    EXPECT_EQ(registration.title, "NetlistFactory Class");
    EXPECT_EQ(registration.versionIndependentName, "QuorelMeridane.Netlist");
    EXPECT_EQ(registration.currentVersion, "QuorelMeridane.Netlist.1");
    EXPECT_EQ(registration.modulePath, m_ModulePath);
    EXPECT_EQ(registration.threadingModel, "Apartment");
    EXPECT_EQ(registration.typeLibraryId, "{6930EA0B-FE84-4D4F-9D8A-ED71BA25C229}");
    EXPECT_EQ(registration.applicationId, "{349C1E8C-81EE-4B36-9697-8384E1CE2FDF}");
    EXPECT_EQ(registration.applicationName, "Netlist");
    EXPECT_EQ(registration.applicationFile, "Netlist.EXE");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(CallEntry(kUnregisterServerEntry), kResultOk);
        EXPECT_FALSE(sys::ReadRegistration(kClass, registration));
    }
    // A path that was relative when the module was loaded.
    fs::copy_file(m_ModulePath, m_Folder / "bin/Other.so");
    fs::current_path(m_Folder / "bin");
    sys::ModuleLoader other;
    std::remove_pointer_t<ModuleEntry>* registerServer = nullptr;
    ASSERT_TRUE(other.Load("Other.so") && other.Find(kRegisterServerEntry, registerServer));
    fs::current_path("/");
    EXPECT_EQ(registerServer(), kResultOk);
    EXPECT_TRUE(sys::ReadRegistration(kClass, registration));
    EXPECT_EQ(registration.modulePath, m_Folder / "bin/Other.so");

    ::setenv("XDG_DATA_HOME", "/dev/null/data", 1);
    EXPECT_LT(CallEntry(kRegisterServerEntry), 0);
    EXPECT_EQ(CallEntry(kUnregisterServerEntry), kResultOk);
}

} // namespace
