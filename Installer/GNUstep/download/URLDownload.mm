#import "GNUstep/download/Loop.h"
#import "GNUstep/download/Values.h"

namespace {

/// Passes a download's messages on to its delegate. It keeps both alive for as long as the download runs.
class DelegateListener : public vant::DownloadListener {
public:
    DelegateListener(NSURLDownload *download, NSURLRequest *request, id delegate)
        : download_([download retain]), request_([request retain]), delegate_([delegate retain]) {}
    DelegateListener(const DelegateListener &) = delete;
    DelegateListener &operator=(const DelegateListener &) = delete;
    ~DelegateListener() override {
        // The last reference may go from within one of the download's own operations, which goes on with it.
        [download_ autorelease];
        [request_ release];
        [delegate_ autorelease];
    }

    void didBegin() override {
        if (answers(@selector(downloadDidBegin:)))
            [delegate_ downloadDidBegin:download_];
    }

    std::optional<vant::DownloadRequest> willRedirect(const vant::DownloadRequest &proposed,
                                                      const vant::DownloadResponse &by) override {
        if (!answers(@selector(download:willSendRequest:redirectResponse:)))
            return proposed;
        NSURLRequest *request = vant::urlRequest(proposed, request_);
        NSURLRequest *answer = [delegate_ download:download_
                                   willSendRequest:request
                                  redirectResponse:vant::urlResponse(by)];
        if (!answer)
            return std::nullopt;
        return answer == request ? proposed : vant::downloadRequest(answer);
    }

    void didReceiveResponse(const vant::DownloadResponse &response) override {
        if (answers(@selector(download:didReceiveResponse:)))
            [delegate_ download:download_ didReceiveResponse:vant::urlResponse(response)];
    }

    void decideDestination(const std::string &suggestedName) override {
        if (answers(@selector(download:decideDestinationWithSuggestedFilename:)))
            [delegate_ download:download_ decideDestinationWithSuggestedFilename:vant::serverText(suggestedName)];
    }

    void didCreateDestination(const std::string &path) override {
        if (answers(@selector(download:didCreateDestination:)))
            [delegate_ download:download_ didCreateDestination:vant::filePath(path)];
    }

    void didReceiveData(std::size_t length) override {
        if (answers(@selector(download:didReceiveDataOfLength:)))
            [delegate_ download:download_ didReceiveDataOfLength:length];
    }

    void didFinish() override {
        if (answers(@selector(downloadDidFinish:)))
            [delegate_ downloadDidFinish:download_];
    }

    void didFail(vant::DownloadError error, const std::string &address) override {
        if (answers(@selector(download:didFailWithError:)))
            [delegate_ download:download_ didFailWithError:vant::urlError(error, address)];
    }

private:
    [[nodiscard]] bool answers(SEL operation) const { return [delegate_ respondsToSelector:operation]; }

    NSURLDownload *download_;
    NSURLRequest *request_;
    id delegate_;
};

/// What one download object carries. The transfer and its loop are alive as long as the download runs.
struct DownloadState {
    NSURLRequest *request = nil;
    BOOL removesFileOnFailure = YES;
    VantDownloadLoop *loop = nil;
    std::weak_ptr<vant::Transfer> transfer;
};

DownloadState &stateIn(void *field) {
    return *static_cast<DownloadState *>(field);
}

} // namespace

/// The behaviour of a class that GNUstep declares and leaves idle: these operations take the place of its own.
@implementation NSURLDownload (VantTransfer)

+ (BOOL)canResumeDownloadDecodedWithEncodingMIMEType:(NSString *)type {
    return NO;
}

// The class's own allocation puts something of its own into the field.
+ (id)allocWithZone:(NSZone *)zone {
    return NSAllocateObject(self, 0, zone);
}

- (id)init {
    return [self initWithRequest:nil delegate:nil];
}

- (id)initWithRequest:(NSURLRequest *)request delegate:(id)delegate {
    self = [super init];
    if (!self)
        return nil;
    auto *state = new DownloadState;
    _NSURLDownloadInternal = state;
    state->request = [request copy];
    state->loop = [VantDownloadLoop currentLoop];
    const auto listener = std::make_shared<DelegateListener>(self, state->request, delegate);
    state->transfer = [state->loop startRequest:vant::downloadRequest(state->request) listener:listener];
    return self;
}

- (id)initWithResumeData:(NSData *)resumeData delegate:(id)delegate path:(NSString *)path {
    [self release];
    return nil;
}

- (void)dealloc {
    auto *state = static_cast<DownloadState *>(_NSURLDownloadInternal);
    if (state)
        [state->request release];
    delete state;
    [super dealloc];
}

- (NSURLRequest *)request {
    return stateIn(_NSURLDownloadInternal).request;
}

- (NSData *)resumeData {
    return nil;
}

- (BOOL)deletesFileUponFailure {
    return stateIn(_NSURLDownloadInternal).removesFileOnFailure;
}

- (void)setDeletesFileUponFailure:(BOOL)deletes {
    auto &state = stateIn(_NSURLDownloadInternal);
    state.removesFileOnFailure = deletes;
    if (const auto transfer = state.transfer.lock())
        transfer->setRemovesFileOnFailure(deletes);
}

- (void)setDestination:(NSString *)path allowOverwrite:(BOOL)allowOverwrite {
    auto &state = stateIn(_NSURLDownloadInternal);
    const auto transfer = state.transfer.lock();
    const char *bytes = [path length] > 0 ? [path fileSystemRepresentation] : nullptr;
    if (!transfer || !bytes)
        return;
    const auto existing = allowOverwrite ? vant::Existing::replace : vant::Existing::keep;
    [state.loop setDestination:bytes existing:existing of:*transfer];
}

- (void)cancel {
    auto &state = stateIn(_NSURLDownloadInternal);
    const auto transfer = state.transfer.lock();
    if (!transfer)
        return;
    transfer->mute();
    if ([NSThread currentThread] == [state.loop thread])
        [state.loop cancel:*transfer];
    else
        [self performSelector:_cmd onThread:[state.loop thread] withObject:nil waitUntilDone:NO];
}

@end
