"""tools/check-names on made-up sources: which literals it refuses."""
import scripts

NOTIFICATIONS = {"base/Notifications.mm": 'NSString *const VantReadyNotification = @"ready";\n'}
PANE = {"shell/Pane.h": '@interface Pane : NSObject {\n    NSArray *mRows; // by kind\n    std::atomic<int> mCount{0};\n}\n'
                        '- (NSArray *)rows;\n@end\n'}


class Names(scripts.TreeCase):

    def breaches(self, files):
        self.write(NOTIFICATIONS | PANE | files)
        return list(scripts.load("check-names").breaches(self.root))

    def test_constants_and_accessors_pass(self):
        self.assertEqual(self.breaches({"ui/Table.mm": '[center post:VantReadyNotification];\nreturn [pane rows];\n'}), [])

    def test_a_notification_as_a_literal_is_refused(self):
        self.assertEqual(self.breaches({"ui/Table.mm": '\n[center post:@"ready"];\n'}),
                         ['ui/Table.mm:2: "ready" is a notification with a constant in base/Notifications.mm'])

    def test_a_field_as_a_literal_is_refused(self):
        self.assertEqual(self.breaches({"ui/Table.mm": '[pane valueForKey:@"mRows"];\n'}),
                         ['ui/Table.mm:1: "mRows" is a field: reach it through an accessor'])

    def test_a_field_with_a_first_value_is_a_field_too(self):
        self.assertEqual(self.breaches({"ui/Table.mm": 'field(pane, "mCount");\n'}),
                         ['ui/Table.mm:1: "mCount" is a field: reach it through an accessor'])

    def test_a_longer_literal_is_none_of_them(self):
        self.assertEqual(self.breaches({"ui/Table.mm": '[self trace:@"not ready, mRows"];\n'}), [])

    def test_comments_are_prose(self):
        self.assertEqual(self.breaches({"ui/Table.h": '/// Posts "ready" when "mRows" is full.\n'}), [])

    def test_a_literal_that_means_something_else_passes(self):
        check = scripts.load("check-names")
        check.OTHERS = {"mRows": "a column's identifier"}
        self.write(NOTIFICATIONS | PANE | {"ui/Table.mm": 'return @"mRows";\n'})
        self.assertEqual(list(check.breaches(self.root)), [])

    def test_sources_without_names_are_refused(self):
        self.write({"ui/Table.mm": "int main;\n"})
        self.assertEqual(list(scripts.load("check-names").breaches(self.root)),
                         [f"check-names: {self.root} defines no notification or no field"])
