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

TEST_F(PlanimeterSettingsTest, DotsFollowTheEnvironmentUntilTheUserStoresAValue) {
  const QMPlanimeterSettings fresh(env_, environment_);
  EXPECT_FALSE(fresh.polygonAnnotationsAsDots());
  EXPECT_FALSE(fresh.routeAnnotationsAsDots());
  EXPECT_TRUE(fresh.editorShowsLengthAnnotations());
  EXPECT_TRUE(fresh.editorShowsAreaCenterAnnotations());
  EXPECT_TRUE(fresh.navigatorShowsRouteLengthAnnotations());
  EXPECT_TRUE(fresh.navigatorShowsAreaCenterAnnotations());
  EXPECT_EQ(fresh.annotationAngleType(), 0);
  EXPECT_TRUE(posts_.empty());

  const auto delegate = std::make_shared<DotsDelegate>();  // held weakly
  environment_.setDelegate(delegate);
  QMPlanimeterSettings settings(env_, environment_);
  EXPECT_TRUE(settings.polygonAnnotationsAsDots());
  settings.setPolygonAnnotationsAsDots(false);
  const QMPlanimeterSettings reread(env_, environment_);
  EXPECT_FALSE(reread.polygonAnnotationsAsDots());
  EXPECT_TRUE(reread.routeAnnotationsAsDots());
}

TEST_F(PlanimeterSettingsTest, EachSetterStoresAndPostsItsNotificationEvenWhenUnchanged) {
  QMPlanimeterSettings settings(env_, environment_);
  using Setter = void (QMPlanimeterSettings::*)(bool);
  const struct {
    Setter setter;
    std::string_view key;
    const char* posted;
  } cases[] = {
      {&QMPlanimeterSettings::setPolygonAnnotationsAsDots, kQMPolygonAnnotationsAsDotsKey,
       "WaypointsCollectionChanged:6"},
      {&QMPlanimeterSettings::setRouteAnnotationsAsDots, kQMRouteAnnotationsAsDotsKey,
       "WaypointsCollectionChanged:6"},
      {&QMPlanimeterSettings::setEditorShowsLengthAnnotations, kQMEditorShowsLengthAnnotationsKey,
       "QMPlanimeterUnitTypeChanged"},
      {&QMPlanimeterSettings::setEditorShowsAreaCenterAnnotations,
       kQMEditorShowsAreaCenterAnnotationsKey, "QMPlanimeterUnitTypeChanged"},
      {&QMPlanimeterSettings::setNavigatorShowsRouteLengthAnnotations,
       kQMNavigatorShowsRouteLengthAnnotationsKey, "QMPlanimeterUnitTypeChanged"},
      {&QMPlanimeterSettings::setNavigatorShowsAreaCenterAnnotations,
       kQMNavigatorShowsAreaCenterAnnotationsKey, "QMPlanimeterUnitTypeChanged"},
  };
  for (const auto& c : cases) {
    posts_.clear();
    (settings.*c.setter)(true);
    (settings.*c.setter)(true);
    EXPECT_EQ(posts_, (std::vector<std::string>{c.posted, c.posted})) << c.key;
    EXPECT_EQ(store_->objectForKey(c.key), SettingsValue(true)) << c.key;  // a bool, no number
  }
}

TEST_F(PlanimeterSettingsTest, AngleTypeHasAPlainAndAStoringSetter) {
  QMPlanimeterSettings settings(env_, environment_);
  settings.setAnnotationAngleType(1);
  EXPECT_EQ(settings.annotationAngleType(), 1);
  EXPECT_FALSE(store_->hasKey(kQMAnnotationAngleTypeKey));
  EXPECT_TRUE(posts_.empty());

  settings.assignAnnotationAngleType(1);
  EXPECT_EQ(posts_, std::vector<std::string>{"QMPlanimeterUnitTypeChanged"});
  EXPECT_EQ(QMPlanimeterSettings(env_, environment_).annotationAngleType(), 1);
}

TEST_F(PlanimeterSettingsTest, InitAnnotationAngleTypeRereadsTheStoreWithoutWritingOrPosting) {
  QMPlanimeterSettings settings(env_, environment_);
  const struct {
    std::optional<SettingsValue> stored;  // absent: no value under the key
    std::int64_t expected;
  } cases[] = {{2, 2}, {std::nullopt, 0}, {-1, -1}};
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
