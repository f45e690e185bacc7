#include "qmcore/geo/QMPlanimeterSettings.hpp"

#include <gtest/gtest.h>

#include <any>
#include <optional>
#include <string>
#include <vector>

#include "qmcore/platform/NotificationCenter.hpp"
#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/testing/FakeEnv.hpp"

namespace qm {
namespace {

class DotsDelegate : public EnvironmentSettingsDelegate {
 public:
  bool defaultMapShowDotsForConnectionPoints() override { return true; }
};

class PlanimeterSettingsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"QMPlanimeterUnitTypeChanged", "WaypointsCollectionChanged"}) {
      observers_.push_back(
          env_.notificationCenter().addObserver(name, [this](const Notification& n) {
            const auto* number = std::any_cast<std::int64_t>(&n.object);
            posts_.push_back(n.name + (number ? ":" + std::to_string(*number) : ""));
          }));
    }
  }
  testing::FakeEnv env_;
  std::shared_ptr<SettingsStore> store_ = env_.standardSettings();
  EnvironmentSettings environment_;
  std::vector<ObserverHandle> observers_;
  std::vector<std::string> posts_;
};

TEST_F(PlanimeterSettingsTest, EachSwitchStartsAtItsDefaultAndStoresAndPostsEvenWhenUnchanged) {
  using S = QMPlanimeterSettings;
  const struct {
    void (S::*set)(bool);
    bool (S::*get)() const;
    bool byDefault;
    const char* posted;
  } cases[] = {
      {&S::setPolygonAnnotationsAsDots, &S::polygonAnnotationsAsDots, false,
       "WaypointsCollectionChanged:6"},
      {&S::setRouteAnnotationsAsDots, &S::routeAnnotationsAsDots, false,
       "WaypointsCollectionChanged:6"},
      {&S::setEditorShowsLengthAnnotations, &S::editorShowsLengthAnnotations, true,
       "QMPlanimeterUnitTypeChanged"},
      {&S::setEditorShowsAreaCenterAnnotations, &S::editorShowsAreaCenterAnnotations, true,
       "QMPlanimeterUnitTypeChanged"},
      {&S::setNavigatorShowsRouteLengthAnnotations, &S::navigatorShowsRouteLengthAnnotations, true,
       "QMPlanimeterUnitTypeChanged"},
      {&S::setNavigatorShowsAreaCenterAnnotations, &S::navigatorShowsAreaCenterAnnotations, true,
       "QMPlanimeterUnitTypeChanged"},
  };
  S settings(env_, environment_);
  EXPECT_EQ(settings.annotationAngleType(), 0);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.posted);
    EXPECT_EQ((settings.*c.get)(), c.byDefault);
    posts_.clear();
    (settings.*c.set)(!c.byDefault);
    (settings.*c.set)(!c.byDefault);
    EXPECT_EQ(posts_, (std::vector<std::string>{c.posted, c.posted}));
    // Stored under the key that a fresh instance reads.
    EXPECT_EQ((S(env_, environment_).*c.get)(), !c.byDefault);
  }
  EXPECT_EQ(store_->objectForKey(kQMPolygonAnnotationsAsDotsKey), SettingsValue(true));  // no 1
}

TEST_F(PlanimeterSettingsTest, DotsFollowTheEnvironmentUntilTheUserStoresAValue) {
  const auto delegate = std::make_shared<DotsDelegate>();  // held weakly
  environment_.setDelegate(delegate);
  QMPlanimeterSettings settings(env_, environment_);
  EXPECT_TRUE(settings.polygonAnnotationsAsDots());
  settings.setPolygonAnnotationsAsDots(false);
  const QMPlanimeterSettings reread(env_, environment_);
  EXPECT_FALSE(reread.polygonAnnotationsAsDots());
  EXPECT_TRUE(reread.routeAnnotationsAsDots());
}

TEST_F(PlanimeterSettingsTest, OnlyAssigningTheAngleTypeStoresAndPostsIt) {
  QMPlanimeterSettings settings(env_, environment_);
  settings.setAnnotationAngleType(1);
  EXPECT_FALSE(store_->hasKey(kQMAnnotationAngleTypeKey));
  settings.assignAnnotationAngleType(1);
  EXPECT_EQ(posts_, std::vector<std::string>{"QMPlanimeterUnitTypeChanged"});
  EXPECT_EQ(QMPlanimeterSettings(env_, environment_).annotationAngleType(), 1);
}

TEST_F(PlanimeterSettingsTest, InitAnnotationAngleTypeRereadsTheStoreWithoutWritingOrPosting) {
  QMPlanimeterSettings settings(env_, environment_);
  const struct {
    std::optional<SettingsValue> stored;  // absent: no value under the key
    std::int64_t expected;
  } cases[] = {{2, 2}, {std::nullopt, 0}};
  for (const auto& c : cases) {
    if (c.stored) {
      store_->setObject(kQMAnnotationAngleTypeKey, *c.stored);
    } else {
      store_->removeObjectForKey(kQMAnnotationAngleTypeKey);
    }
    settings.setAnnotationAngleType(7);  // a value the store does not hold
    settings.initAnnotationAngleType();
    EXPECT_EQ(settings.annotationAngleType(), c.expected) << c.expected;
    EXPECT_EQ(store_->objectForKey(kQMAnnotationAngleTypeKey), c.stored) << c.expected;
  }
  EXPECT_TRUE(posts_.empty());
}

}  // namespace
}  // namespace qm
