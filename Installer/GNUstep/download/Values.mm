#import "GNUstep/download/Values.h"

/// A response whose length and name are those that the transfer found, however the platform would guess them.
@interface VantHTTPURLResponse : NSHTTPURLResponse {
    long long _length;
    NSString *_name;
    NSString *_type;
}
- (instancetype)initWithURL:(NSURL *)address values:(const vant::DownloadResponse &)values name:(NSString *)name;
@end

namespace {

std::string utf8(NSString *text) {
    const char *bytes = [text UTF8String];
    return bytes != nullptr ? bytes : "";
}

NSURL *urlFromAddress(const std::string &address) {
    return [NSURL URLWithString:vant::serverText(address)];
}

/// The fields by name; values of fields that came more than once are joined, as HTTP defines it.
NSDictionary *headerFields(const vant::DownloadResponse &values) {
    NSMutableDictionary *fields = [NSMutableDictionary dictionary];
    for (const auto &[name, value] : values.fields) {
        NSString *key = vant::serverText(name);
        NSString *earlier = [fields objectForKey:key];
        NSString *text = vant::serverText(value);
        [fields setObject:earlier ? [NSString stringWithFormat:@"%@, %@", earlier, text] : text forKey:key];
    }
    return fields;
}

} // namespace

@implementation VantHTTPURLResponse

- (instancetype)initWithURL:(NSURL *)address values:(const vant::DownloadResponse &)values name:(NSString *)name {
    self = [super initWithURL:address
                   statusCode:values.status
                  HTTPVersion:vant::serverText(values.version)
                 headerFields:headerFields(values)];
    if (self) {
        _length = values.expectedLength;
        _name = [name copy];
        _type = [vant::serverText(values.mediaType()) copy];
    }
    return self;
}

- (void)dealloc {
    [_name release];
    [_type release];
    [super dealloc];
}

- (NSString *)MIMEType {
    return _type;
}

- (long long)expectedContentLength {
    return _length;
}

- (NSString *)suggestedFilename {
    return _name;
}

@end

namespace vant {

NSString *serverText(std::string_view text) {
    NSString *string = [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
    if (!string)
        string = [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSISOLatin1StringEncoding];
    return [string autorelease];
}

NSString *filePath(const std::string &path) {
    return [[NSFileManager defaultManager] stringWithFileSystemRepresentation:path.data() length:path.size()];
}

DownloadRequest downloadRequest(NSURLRequest *request) {
    DownloadRequest values;
    values.address = utf8([[request URL] absoluteString]);
    values.timeOut = [request timeoutInterval];
    if ([[request HTTPMethod] length] > 0)
        values.method = utf8([request HTTPMethod]);
    NSDictionary *fields = [request allHTTPHeaderFields];
    for (NSString *name in fields)
        values.fields.push_back({utf8(name), utf8([fields objectForKey:name])});
    NSData *body = [request HTTPBody];
    values.body.assign(static_cast<const char *>([body bytes]), [body length]);
    return values;
}

NSURLRequest *urlRequest(const DownloadRequest &values, NSURLRequest *original) {
    NSMutableURLRequest *request = [[original mutableCopy] autorelease];
    [request setURL:urlFromAddress(values.address)];
    [request setHTTPMethod:serverText(values.method)];
    if (values.body.empty())
        [request setHTTPBody:nil];
    NSMutableDictionary *fields = [NSMutableDictionary dictionary];
    for (const auto &[name, value] : values.fields)
        [fields setObject:serverText(value) forKey:serverText(name)];
    [request setAllHTTPHeaderFields:fields];
    return request;
}

NSURLResponse *urlResponse(const DownloadResponse &values) {
    NSURL *address = urlFromAddress(values.address);
    if (values.status != 0) {
        NSString *name = serverText(values.suggestedName());
        return [[[VantHTTPURLResponse alloc] initWithURL:address values:values name:name] autorelease];
    }
    return [[[NSURLResponse alloc] initWithURL:address
                                      MIMEType:@"application/octet-stream"
                         expectedContentLength:values.expectedLength
                              textEncodingName:nil] autorelease];
}

NSError *urlError(DownloadError error, const std::string &address) {
    NSMutableDictionary *information = [NSMutableDictionary dictionary];
    [information setObject:serverText(address) forKey:NSErrorFailingURLStringKey];
    if (NSURL *url = address.empty() ? nil : urlFromAddress(address))
        [information setObject:url forKey:@"NSErrorFailingURLKey"];
    return [NSError errorWithDomain:NSURLErrorDomain code:static_cast<NSInteger>(error) userInfo:information];
}

} // namespace vant
