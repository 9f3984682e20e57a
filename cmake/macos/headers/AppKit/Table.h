#pragma once
#import <AppKit/Controls.h>

/// Tables made of cells.

NS_ASSUME_NONNULL_BEGIN

@class NSTableHeaderView, NSTableView;

typedef NSString *NSUserInterfaceItemIdentifier;

@interface NSTableColumn : NSObject
@property (copy) NSUserInterfaceItemIdentifier identifier;
@property (strong) id dataCell;
@property (nullable, weak) NSTableView *tableView;
@property CGFloat width;
@end

@protocol NSTableViewDataSource <NSObject>
@optional
- (NSInteger)numberOfRowsInTableView:(NSTableView *)table;
- (nullable id)tableView:(NSTableView *)table
    objectValueForTableColumn:(nullable NSTableColumn *)column
                          row:(NSInteger)row;
- (void)tableView:(NSTableView *)table
    setObjectValue:(nullable id)value
    forTableColumn:(nullable NSTableColumn *)column
               row:(NSInteger)row;
@end

@protocol NSTableViewDelegate <NSObject>
@optional
- (void)tableView:(NSTableView *)table
    willDisplayCell:(id)cell
     forTableColumn:(nullable NSTableColumn *)column
                row:(NSInteger)row;
- (BOOL)tableView:(NSTableView *)table shouldSelectRow:(NSInteger)row;
- (NSString *)tableView:(NSTableView *)table
         toolTipForCell:(NSCell *)cell
                   rect:(NSRectPointer)rect
            tableColumn:(nullable NSTableColumn *)column
                    row:(NSInteger)row
          mouseLocation:(NSPoint)location;
@end

@interface NSTableView : NSControl
@property (nullable, weak) id<NSTableViewDataSource> dataSource;
@property (nullable, weak) id<NSTableViewDelegate> delegate;
@property (nullable, strong) NSTableHeaderView *headerView;
@property (nullable, strong) NSView *cornerView;
@property (readonly, copy) NSArray<NSTableColumn *> *tableColumns;
@property (readonly) NSInteger numberOfRows;
@property (readonly) NSInteger numberOfColumns;
@property (readonly) NSInteger selectedRow;
@property CGFloat rowHeight;
@property NSSize intercellSpacing;
- (nullable NSTableColumn *)tableColumnWithIdentifier:(NSUserInterfaceItemIdentifier)identifier;
- (void)reloadData;
- (void)noteNumberOfRowsChanged;
- (void)sizeLastColumnToFit;
- (void)scrollRowToVisible:(NSInteger)row;
- (NSRange)rowsInRect:(NSRect)rect;
- (NSRect)rectOfColumn:(NSInteger)column;
- (NSRect)rectOfRow:(NSInteger)row;
- (NSRect)frameOfCellAtColumn:(NSInteger)column row:(NSInteger)row;
@end

NS_ASSUME_NONNULL_END
